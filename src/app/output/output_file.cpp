#include "app/output/output_file.h"

#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace tessara {

OutputFile::OutputFile(const std::string& path)
    : path_(path), file_(path), stream_(file_.Path(), std::ios::binary | std::ios::trunc)
{
    if (!stream_)
        throw std::runtime_error("The file " + path + " can't be written: " + std::generic_category().message(errno) +
                                 ".");
}

void OutputFile::Commit()
{
    stream_.close();
    if (!stream_)
        throw std::runtime_error("The file " + path_ + " couldn't be written in full: is the disk full?");
    file_.Commit();
}

}  // namespace tessara
