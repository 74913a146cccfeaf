#include "platform/com/module_resource.h"

#include <elf.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <vector>

namespace tessara {

namespace {

constexpr std::uint64_t kLargestTable = 4 << 20;
constexpr std::uint64_t kLargestResource = 16 << 20;

/// A module's file, read piece by piece. Nothing that the file says about itself is believed unchecked.
class ElfFile {
public:
    explicit ElfFile(const std::string& path) : file_(Open(path)), size_(SizeOf(path)) {}

    std::optional<std::string> Section(std::string_view name)
    {
        Elf64_Ehdr header = {};
        if (!ReadAt(0, &header, sizeof header) || !IsOfThisMachine(header))
            return std::nullopt;
        const auto sections = ReadSections(header);
        if (header.e_shstrndx >= sections.size())
            return std::nullopt;
        const auto names = ReadContent(sections[header.e_shstrndx], kLargestTable);
        if (!names)
            return std::nullopt;
        for (const Elf64_Shdr& section : sections) {
            if (NameAt(*names, section.sh_name) == name && section.sh_type == SHT_PROGBITS)
                return ReadContent(section, kLargestResource);
        }
        return std::nullopt;
    }

private:
    /// Only a regular file is opened: reading a pipe would wait for its other end.
    static std::ifstream Open(const std::string& path)
    {
        std::error_code error;
        std::ifstream file;
        if (std::filesystem::is_regular_file(path, error))
            file.open(path, std::ios::binary);
        return file;
    }

    static std::uint64_t SizeOf(const std::string& path)
    {
        std::error_code error;
        const std::uint64_t size = std::filesystem::file_size(path, error);
        return error ? 0 : size;
    }

    static bool IsOfThisMachine(const Elf64_Ehdr& header)
    {
        constexpr unsigned char order = std::endian::native == std::endian::little ? ELFDATA2LSB : ELFDATA2MSB;
        return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 && header.e_ident[EI_CLASS] == ELFCLASS64 &&
               header.e_ident[EI_DATA] == order && header.e_shentsize == sizeof(Elf64_Shdr);
    }

    static std::string_view NameAt(std::string_view names, std::size_t place)
    {
        const std::string_view rest = names.substr(std::min(place, names.size()));
        return rest.substr(0, rest.find('\0'));
    }

    bool ReadAt(std::uint64_t place, void* out, std::size_t size)
    {
        if (place > static_cast<std::uint64_t>(INT64_MAX))
            return false;
        file_.clear(file_.rdstate() & ~(std::ios::eofbit | std::ios::failbit));
        return file_.is_open() && file_.seekg(static_cast<std::streamoff>(place)) &&
               file_.read(static_cast<char*>(out), static_cast<std::streamsize>(size));
    }

    std::vector<Elf64_Shdr> ReadSections(const Elf64_Ehdr& header)
    {
        std::vector<Elf64_Shdr> sections(header.e_shnum);
        if (!ReadAt(header.e_shoff, sections.data(), sections.size() * sizeof(Elf64_Shdr)))
            sections.clear();
        return sections;
    }

    std::optional<std::string> ReadContent(const Elf64_Shdr& section, std::uint64_t largest)
    {
        if (section.sh_size > largest || section.sh_size > size_)
            return std::nullopt;
        std::string content(section.sh_size, '\0');
        if (!ReadAt(section.sh_offset, content.data(), content.size()))
            return std::nullopt;
        return content;
    }

    std::ifstream file_;
    std::uint64_t size_;
};

}  // namespace

std::optional<std::string> ReadModuleResource(const std::string& modulePath, const char* type, unsigned number)
{
    auto text = ElfFile(modulePath).Section(".tessara." + std::string(type) + '.' + std::to_string(number));
    if (text && !text->empty() && text->back() == '\0')
        text->pop_back();
    return text;
}

}  // namespace tessara
