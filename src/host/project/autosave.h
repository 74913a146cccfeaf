#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tessara {

class FileLock;
class ProjectWriter;

/// Work that a program hadn't saved when it ended without being asked: a project in the autosave folder. As long as
/// this object lives, no other program offers it.
class Recovery {
public:
    Recovery(Recovery&& other) noexcept;
    Recovery& operator=(Recovery&& other) noexcept;
    ~Recovery();

    /// The project that holds the work.
    const std::string& Path() const noexcept { return path_; }

    /// The project that the work was on; empty where it had never been saved.
    const std::string& ProjectPath() const noexcept { return projectPath_; }

    /// When the work was kept.
    std::chrono::system_clock::time_point Time() const noexcept { return time_; }

    /// Forgets the work.
    void Discard();

private:
    friend class Autosave;
    friend std::vector<Recovery> FindRecoveries(const std::string& folder);
    Recovery(std::unique_ptr<FileLock> lock, std::string path);

    std::unique_ptr<FileLock> lock_;
    std::string path_;
    std::string projectPath_;
    std::chrono::system_clock::time_point time_;
};

/// Where programs keep work that isn't saved: the folder tessara/autosave in the user's state folder.
std::string AutosaveFolder();

/// What ended programs left behind, the newest first. What can't be read, or belongs to a program that runs, isn't
/// among it.
std::vector<Recovery> FindRecoveries(const std::string& folder = AutosaveFolder());

/// Keeps the unsaved work of one running program in a file of its own, so that it can be recovered after a crash.
/// Whatever ends the program in the ordinary way ends this object, and the file goes.
class Autosave {
public:
    /// Makes the folder where it isn't there. \throws StorageError
    explicit Autosave(const std::string& folder = AutosaveFolder());

    /// Goes on with recovered work, which thus stays safe.
    explicit Autosave(Recovery&& recovery);

    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;
    ~Autosave();

    /// Keeps the work as it is now, in place of what was kept before.
    /// \param projectPath the project that the work is on, with whose content the kept one begins, or empty
    /// \param write adds or changes elements and settings
    /// \throws StorageError, with the work kept before still there, and what `write` throws
    void Keep(const std::string& projectPath, const std::function<void(ProjectWriter&)>& write);

    /// Forgets what was kept: the work has been saved, or nobody wants it.
    void Forget() noexcept;

    /// The project that holds the work, if any is kept.
    const std::string& Path() const noexcept { return path_; }

private:
    explicit Autosave(std::pair<std::string, std::unique_ptr<FileLock>> place);

    std::string lockPath_;
    std::string path_;
    std::unique_ptr<FileLock> lock_;
};

}  // namespace tessara
