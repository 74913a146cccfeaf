#include "platform/com/module_resource.h"
#include "platform/com/version_record.h"
#include "support/registry_sandbox.h"

#include <elf.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <random>

namespace {

using namespace tessara;
using namespace tessara::test;

TESSARA_RESOURCE("TEXT", "7") constexpr char kText[] = "carried by this program";
TESSARA_RESOURCE("VERSION", "1")
constexpr char kVersion[] = "FILEVERSION 1,2,3,4\n\nFILETYPE 0x2\nVALUE \"A name\" \"a, b\"\nVALUE \"Empty\" \"\"\n";

TEST(ModuleResource, IsReadOutOfTheFile)
{
    EXPECT_EQ(ReadModuleResource("/proc/self/exe", "TEXT", 7), kText);
    EXPECT_EQ(ReadModuleResource("/proc/self/exe", "TEXT", 8), std::nullopt);
    EXPECT_EQ(ReadModuleResource("/proc/self/exe", "TEX", 7), std::nullopt);
}

TEST(ModuleResource, IsNotThereInWhatIsNoModule)
{
    const RegistrySandbox sandbox;
    const std::string path = sandbox.Path("module");
    const auto read = [&path] { return ReadModuleResource(path, "TEXT", 7); };
    EXPECT_EQ(read(), std::nullopt);
    for (const std::string& bytes : {std::string(), std::string("text"), std::string(4096, '\xFF')}) {
        sandbox.Write(path, bytes);
        EXPECT_EQ(read(), std::nullopt);
    }
    std::filesystem::remove(path);
    mkfifo(path.c_str(), 0600);
    EXPECT_EQ(read(), std::nullopt);  // without waiting
    EXPECT_EQ(ReadModuleResource(sandbox.Path(""), "TEXT", 7), std::nullopt);
}

TEST(ModuleResource, AFileThatLiesAboutItselfHarmsNothing)
{
    const RegistrySandbox sandbox;
    const std::string whole = tessara::test::ReadBytes("/proc/self/exe");
    const std::string path = sandbox.Write(sandbox.Path("module"), whole);
    Elf64_Ehdr header;
    std::memcpy(&header, whole.data(), sizeof header);
    const std::size_t tableSize = header.e_shnum * sizeof(Elf64_Shdr);
    std::mt19937 random(1);
    for (int i = 0; i < 1000; ++i) {
        // A few bytes of the header or of the section table take any value.
        std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
        std::vector<std::size_t> places(4);
        for (std::size_t& place : places) {
            place = random() % 2 == 0 ? random() % sizeof header : header.e_shoff + random() % tableSize;
            file.seekp(static_cast<std::streamoff>(place)).put(static_cast<char>(random()));
        }
        file.flush();
        const auto found = ReadModuleResource(path, "TEXT", 7);
        EXPECT_TRUE(!found || found->size() <= 16u << 20);
        for (const std::size_t place : places)
            file.seekp(static_cast<std::streamoff>(place)).put(whole[place]);
    }
    EXPECT_EQ(ReadModuleResource(path, "TEXT", 7), kText);
    for (std::size_t size = whole.size() - 1; size > 0; size /= 2) {
        std::filesystem::resize_file(path, size);
        EXPECT_EQ(ReadModuleResource(path, "TEXT", 7), std::nullopt) << size;
    }
}

TEST(VersionRecord, HasNumbersAndStrings)
{
    const auto record = ReadVersionRecord("/proc/self/exe");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->fileVersion, (tessara::VersionRecord::Version{1, 2, 3, 4}));
    EXPECT_EQ(record->fileType, 2u);
    EXPECT_EQ(record->strings.at("A name"), "a, b");
    EXPECT_EQ(record->strings.at("Empty"), "");
    EXPECT_NE(std::strlen(kVersion), 0u);
}

}  // namespace
