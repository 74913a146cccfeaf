#pragma once

#include "platform/system/file_error.h"
#include "platform/system/file_lock.h"
#include "platform/system/unfinished_files.h"

#include <optional>
#include <string>

namespace tessara {

/// Stands for the standard output as a file to write.
inline constexpr char kStandardOutput[] = "/dev/stdout";

/// A new version of a file, written beside it and put in its place as a whole: whenever the process ends, the file
/// holds its old content or all of the new one. Links are followed; permissions, and the owner where the user may give
/// a file away, stay. A version that isn't put in place goes with this object, and with an interrupted program; what a
/// killed process left behind goes with the next version of any file in the folder.
///
/// A device or a pipe has no versions: what is written goes straight through to it.
class TESSARA_EXPORT ReplacementFile {
public:
    enum class Kind {
        Any,        ///< a file, a device or a pipe
        File,       ///< a file alone
        OpenToAll,  ///< a file that everybody may read where it is new, whatever mask this process has
    };

    /// Makes an empty file beside the target, or opens a device.
    /// \param target a file, a link to one, a name that is free, a device, a pipe, or kStandardOutput
    /// \throws FileError
    explicit ReplacementFile(const std::string& target, Kind kind = Kind::Any);
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;
    ~ReplacementFile();

    /// Where the new version is to be written.
    const std::string& Path() const noexcept { return path_; }

    /// A descriptor of the same, at the beginning.
    int Descriptor() const noexcept;

    /// The file that it replaces, as it was named.
    const std::string& Target() const noexcept { return target_; }

    bool ReplacesFile() const noexcept { return replacesFile_; }

    /// Sees to it that the bytes are on the disk, and lets them count. \throws FileError, with the target as it was
    void PutInPlace();

private:
    void MakeBeside();
    void OpenDevice();
    void TakeOver() const;
    [[noreturn]] void FailWith(int error) const;

    std::string target_;
    std::string place_;  // the target with links followed
    bool replacesFile_ = false;
    unsigned mode_ = 0;  // of the file that is there
    unsigned owner_ = 0;
    unsigned group_ = 0;
    bool openToAll_ = false;
    std::string path_;
    std::optional<UnfinishedFile> unfinished_;
    std::optional<FileLock> file_;
    int device_ = -1;
    bool placed_ = false;
};

/// Finds out without a trace whether the target of a replacement could be written. \throws FileError as its making
/// would
TESSARA_EXPORT void RequireReplaceable(const std::string& target,
                                       ReplacementFile::Kind kind = ReplacementFile::Kind::Any);

}  // namespace tessara
