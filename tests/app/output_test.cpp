#include "app/options/number_list.h"
#include "app/output/mesh_file.h"
#include "app/output/output_file.h"
#include "app/output/triangle_reader.h"
#include "app/program.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tessara {
namespace {

TEST(OutputFile, AppearsInFullOrNotAtAll)
{
    const ScratchFolder scratch;
    WriteText(scratch / "a", "old");
    {
        OutputFile file(scratch / "a");
        file.Stream() << "half";
        EXPECT_EQ(ReadText(scratch / "a"), "old");
    }
    EXPECT_EQ(scratch.List(), std::vector<std::string>{"a"});
    EXPECT_EQ(ReadText(scratch / "a"), "old");
    OutputFile file(scratch / "a");
    file.Stream() << "new";
    file.Commit();
    EXPECT_EQ(ReadText(scratch / "a"), "new");
    EXPECT_EQ(scratch.List(), std::vector<std::string>{"a"});
}

TEST(TriangleReader, RefusesWhatIsIncomplete)
{
    const ScratchFolder scratch;
    const std::string vertex = "1.000000\t0.500000\t2.000000\n";
    const auto read = [&](const std::string& text) {
        WriteText(scratch / "dump", text);
        TriangleReader reader(scratch / "dump");
        TriangleReader::Triangle triangle;
        int count = 0;
        while (reader.Next(triangle))
            ++count;
        return count;
    };
    EXPECT_EQ(read(""), 0);
    EXPECT_EQ(read(vertex + vertex + vertex), 1);
    EXPECT_EQ(read("nan\t-inf\t2.000000\n" + vertex + vertex), 1);
    const std::string damaged[] = {vertex,
                                   vertex + vertex,
                                   vertex + vertex + "1.0\t2.0",
                                   vertex + vertex + "1.0\t2.0\n",
                                   vertex + vertex + "1.0\t2.0\t3.0",
                                   vertex + "\n" + vertex,
                                   "a\tb\tc\n"};
    for (const std::string& text : damaged)
        EXPECT_THROW(read(text), std::runtime_error) << text;
    EXPECT_THROW(TriangleReader(scratch / "missing"), std::runtime_error);
}

TEST(MeshFormat, GoesByTheEnding)
{
    EXPECT_EQ(MeshFormatOf("a.obj"), MeshFormat::Obj);
    EXPECT_EQ(MeshFormatOf("b.c/A.PLY"), MeshFormat::Ply);
    EXPECT_EQ(MeshFormatOf("a.Stl"), MeshFormat::Stl);
    EXPECT_EQ(MeshFormatOf("a.txt"), MeshFormat::Text);
    EXPECT_EQ(MeshFormatOf("a.obj/triangles"), MeshFormat::Text);
}

TEST(NumberList, TakesExactlyTheNumbersAskedFor)
{
    EXPECT_EQ(ParseNumbers("1,-2.5,3e2", ',', 3), (std::vector<double>{1.0, -2.5, 300.0}));
    EXPECT_EQ(ParseNumbers("800x600", 'x', 2), (std::vector<double>{800.0, 600.0}));
    for (const char* text : {"", "1", "1,2,3", "1,", ",1", "1, 2", "1,2 ", "1;2", "a,b", "nan,1", "inf,1"})
        EXPECT_TRUE(ParseNumbers(text, ',', 2).empty()) << text;
}

}  // namespace
}  // namespace tessara
