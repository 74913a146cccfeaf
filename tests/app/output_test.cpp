#include "app/options/number_list.h"
#include "app/output/polygon_text.h"
#include "app/output/triangle_reader.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tessara {
namespace {

TEST(PolygonText, GivesTheTrianglesThatCameInPieces)
{
    const std::string vertex = "1.000000\t0.500000\t2.000000\n";
    const auto count = [](const std::string& text, std::size_t piece) {
        PolygonText polygons;
        for (std::size_t at = 0; at < text.size(); at += piece)
            polygons.Append(std::string_view(text).substr(at, piece));
        TriangleReader reader(polygons);
        TriangleReader::Triangle triangle;
        std::uint64_t triangles = 0;
        while (reader.Next(triangle))
            ++triangles;
        EXPECT_EQ(triangles, polygons.Triangles());
        return triangles;
    };
    std::string many;
    for (int i = 0; i < 60000; ++i)
        many += vertex;
    EXPECT_EQ(count("", 1), 0u);
    EXPECT_EQ(count("nan\t-inf\t2.000000\n" + vertex + vertex, 7), 1u);
    EXPECT_EQ(count(many, 65536), 20000u);
    EXPECT_EQ(count(many, many.size()), 20000u);
    const std::string damaged[] = {vertex,
                                   vertex + vertex,
                                   vertex + vertex + "1.0\t2.0",
                                   vertex + vertex + "1.0\t2.0\n",
                                   vertex + vertex + "1.0\t2.0\t3.0",
                                   vertex + "\n" + vertex,
                                   "a\tb\tc\n"};
    for (const std::string& text : damaged)
        EXPECT_THROW(count(text, 5), std::runtime_error) << text;
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
