#pragma once

#include "../../platform/com/com_object.h"
#include "../../services/parser.h"
#include "project_setting.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessara {

class ProjectDatabase;
struct ProjectValue;

/// The place of one element, a terrain, in a project file: its values under their names, through the parser interface,
/// and what a program remembers beside them. It keeps the file open as long as it lives.
///
/// A value goes out through GetNodeValue only if its size is the one that its name calls for; for any other, and for
/// names that no surface saves, there is Read. A matrix or an image of the wrong size isn't even found, so that nobody
/// makes room for it. Names that come in are freed. In a file that was opened for reading AddNode fails; in one that is
/// being written what fails is told by ProjectWriter::Commit as well.
class ProjectPlace final : public ComObject<IParser> {
public:
    struct Value {
        std::string name;
        std::int32_t typeCode = 0;
        std::int64_t size = 0;     ///< in bytes
        bool deliverable = false;  ///< the size is what the name calls for
    };

    /// \param element its number in the database \throws StorageError
    ProjectPlace(std::shared_ptr<ProjectDatabase> database, std::int64_t element, std::string name, bool writable);

    HRESULT STDMETHODCALLTYPE AddNode(ParserNode parent, BSTR name, const void* bytes, LONG size,
                                      LONG typeCode) override;
    HRESULT STDMETHODCALLTYPE GetNodeValue(ParserNode node, void* buffer, LONG* count, LONG typeCode) override;
    HRESULT STDMETHODCALLTYPE FindNode(ParserNode parent, BSTR name, LONG index, ParserNode* node) override;

    /// Name of the element.
    const std::string& Name() const noexcept { return name_; }

    /// All values, by name.
    std::vector<Value> Values() const;

    /// Bytes of any value. \return nothing where there is none of that name \throws StorageError
    std::optional<std::vector<std::uint8_t>> Read(std::string_view name) const;

    /// Adds a value, or replaces the one of that name. \throws StorageError
    void Write(std::string_view name, std::int32_t typeCode, const void* bytes, std::size_t size);

    /// Takes a value away, where there is one. \throws StorageError
    void Remove(std::string_view name);

    ProjectSettings Settings() const;
    void Set(std::string_view name, const ProjectSetting& value);
    void Forget(std::string_view name);

protected:
    ~ProjectPlace() override;

private:
    const ProjectValue* Find(std::string_view name) const;
    std::optional<std::int32_t> Integer(std::string_view name) const;
    bool IsDeliverable(const ProjectValue& value) const;
    bool Deliver(const ProjectValue& value, void* buffer) const;
    void Reload();
    void RequireWritable() const;

    std::shared_ptr<ProjectDatabase> database_;
    std::int64_t element_;
    std::string name_;
    bool writable_;
    std::vector<ProjectValue> values_;
};

}  // namespace tessara
