#include "host/project/project_place.h"

#include "host/project/project_database.h"
#include "persistence/saved_value.h"
#include "platform/com/bstr.h"
#include "platform/com/guard.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace tessara {

namespace {

/// Takes the BSTR over.
std::string TakeName(BSTR name)
{
    BstrHolder holder;
    *holder.Out() = name;
    return holder.Narrow();
}

/// A node is the number of a value, from 1, in the words that the parser gives out.
ParserNode NodeOf(std::size_t index)
{
    return reinterpret_cast<ParserNode>(index + 1);
}

/// Values for whose size a reader makes room.
bool IsBlock(std::string_view name)
{
    const std::optional<SavedId> id = FindSavedValue(name);
    return id && (ValueOf(*id).shape == SavedShape::Matrix || ValueOf(*id).shape == SavedShape::Image);
}

std::size_t IndexOf(ParserNode node)
{
    return reinterpret_cast<std::size_t>(node) - 1;
}

}  // namespace

ProjectPlace::ProjectPlace(std::shared_ptr<ProjectDatabase> database, std::int64_t element, std::string name,
                           bool writable)
    : database_(std::move(database)), element_(element), name_(std::move(name)), writable_(writable)
{
    Reload();
}

ProjectPlace::~ProjectPlace() = default;

void ProjectPlace::Reload()
{
    values_ = database_->Values(element_);
}

const ProjectValue* ProjectPlace::Find(std::string_view name) const
{
    const auto found =
        std::find_if(values_.begin(), values_.end(), [name](const ProjectValue& value) { return value.name == name; });
    return found == values_.end() ? nullptr : &*found;
}

std::optional<std::int32_t> ProjectPlace::Integer(std::string_view name) const
{
    std::array<std::uint8_t, sizeof(std::int32_t)> bytes{};
    const ProjectValue* value = Find(name);
    if (!value || value->size != static_cast<std::int64_t>(bytes.size()) ||
        !database_->ReadValue(element_, *value, bytes))
        return std::nullopt;
    std::int32_t number = 0;
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
}

bool ProjectPlace::IsDeliverable(const ProjectValue& value) const
{
    const std::optional<SavedId> id = FindSavedValue(value.name);
    return id && HasSavedSize(*id, value.size, [this](SavedId other) { return Integer(ValueOf(other).name); });
}

/// Text is looked at before it goes out: it must end within its buffer.
bool ProjectPlace::Deliver(const ProjectValue& value, void* buffer) const
{
    const auto size = static_cast<std::size_t>(value.size);
    if (ValueOf(*FindSavedValue(value.name)).shape != SavedShape::Text)
        return database_->ReadValue(element_, value, {static_cast<std::uint8_t*>(buffer), size});
    std::vector<std::uint8_t> text(size);
    if (!database_->ReadValue(element_, value, text) || text.back() != 0)
        return false;
    std::copy(text.begin(), text.end(), static_cast<std::uint8_t*>(buffer));
    return true;
}

HRESULT ProjectPlace::AddNode(ParserNode parent, BSTR name, const void* bytes, LONG size, LONG typeCode)
{
    return Guard([&] {
        try {
            const std::string text = TakeName(name);
            if (parent || text.empty() || size < 0 || (size > 0 && !bytes))
                throw StorageError("A value for \"" + name_ + "\" has no name, no bytes or no size");
            Write(text, typeCode, bytes, static_cast<std::size_t>(size));
            return S_OK;
        } catch (...) {
            database_->NoteFailure();
            throw;
        }
    });
}

HRESULT ProjectPlace::FindNode(ParserNode parent, BSTR name, LONG index, ParserNode* node)
{
    return Guard([&] {
        const std::string text = TakeName(name);
        if (!node)
            return E_POINTER;
        *node = nullptr;
        const ProjectValue* value = Find(text);
        if (parent || index != -1 || !value)
            return E_FAIL;
        if (IsBlock(value->name) && !IsDeliverable(*value))
            return E_FAIL;
        *node = NodeOf(static_cast<std::size_t>(value - values_.data()));
        return S_OK;
    });
}

HRESULT ProjectPlace::GetNodeValue(ParserNode node, void* buffer, LONG* count, LONG)
{
    if (!count)
        return E_POINTER;
    *count = 0;
    return Guard([&] {
        const std::size_t index = IndexOf(node);
        if (!buffer || index >= values_.size())
            return E_INVALIDARG;
        const ProjectValue& value = values_[index];
        if (!IsDeliverable(value) || !Deliver(value, buffer))
            return E_FAIL;
        *count = static_cast<LONG>(value.size);
        return S_OK;
    });
}

std::vector<ProjectPlace::Value> ProjectPlace::Values() const
{
    std::vector<Value> values;
    for (const ProjectValue& value : values_) {
        if (value.size >= 0)
            values.push_back({value.name, value.typeCode, value.size, IsDeliverable(value)});
    }
    return values;
}

std::optional<std::vector<std::uint8_t>> ProjectPlace::Read(std::string_view name) const
{
    const ProjectValue* value = Find(name);
    if (!value || value->size < 0)
        return std::nullopt;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(value->size));
    if (!database_->ReadValue(element_, *value, bytes))
        return std::nullopt;
    return bytes;
}

void ProjectPlace::RequireWritable() const
{
    if (!writable_)
        throw StorageError("The project \"" + database_->Path() + "\" is open for reading only");
}

void ProjectPlace::Write(std::string_view name, std::int32_t typeCode, const void* bytes, std::size_t size)
{
    RequireWritable();
    database_->WriteValue(element_, name, typeCode, {static_cast<const std::uint8_t*>(bytes), size});
    // The depth is left out where it is 32 bits: the one of an older image must not stand for the new one.
    if (name == ValueOf(SavedId::SourceData).name)
        database_->RemoveValue(element_, ValueOf(SavedId::SourceBits).name);
    Reload();
}

void ProjectPlace::Remove(std::string_view name)
{
    RequireWritable();
    database_->RemoveValue(element_, name);
    Reload();
}

ProjectSettings ProjectPlace::Settings() const
{
    return database_->Settings(element_);
}

void ProjectPlace::Set(std::string_view name, const ProjectSetting& value)
{
    RequireWritable();
    database_->WriteSetting(element_, name, value);
}

void ProjectPlace::Forget(std::string_view name)
{
    RequireWritable();
    database_->RemoveSetting(element_, name);
}

}  // namespace tessara
