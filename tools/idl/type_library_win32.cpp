#include "idl/type_library_win32.h"

#include "platform/com/com_ptr.h"
#include "platform/com/guid_text.h"
#include "platform/system/wide_text_win32.h"

#include <deque>
#include <map>
#include <stdexcept>

namespace tessara::idl {

namespace {

void Require(HRESULT result, const std::string& what)
{
    if (FAILED(result))
        throw std::runtime_error(what + " failed with result " + std::to_string(static_cast<unsigned>(result)));
}

GUID ToGuid(const std::string& id)
{
    const auto guid = ParseGuid('{' + id + '}');
    if (!guid)
        throw std::runtime_error(id + " is no identifier");
    return *guid;
}

/// Text that the system's functions take as if they changed it.
class Name {
public:
    explicit Name(const std::string& text) : text_(ToWide(text)) {}
    operator wchar_t*() { return text_.data(); }

private:
    std::wstring text_;
};

/// The descriptions of one method's arguments and all that they point to.
struct Arguments {
    std::vector<ELEMDESC> elements;
    std::deque<TYPEDESC> targets;
    std::deque<ARRAYDESC> arrays;
    std::deque<PARAMDESCEX> defaults;
    SHORT optional = 0;
};

class Writer {
public:
    Writer(const Library& library, const std::string& path) : library_(library)
    {
        Require(CreateTypeLib2(SYS_WIN64, ToWide(path).c_str(), file_.Out()), "CreateTypeLib2");
        file_->SetGuid(ToGuid(library.id));
        file_->SetName(Name(library.name));
        file_->SetVersion(static_cast<WORD>(library.major), static_cast<WORD>(library.minor));
        file_->SetLcid(library.locale);
        file_->SetDocString(Name(library.help));
        ComPtr<ITypeLib> standard;
        Require(LoadTypeLib(L"stdole2.tlb", standard.Out()), "loading stdole2.tlb");
        Require(standard->GetTypeInfoOfGuid(IID_IUnknown, unknown_.Out()), "finding IUnknown");
    }

    void Write()
    {
        for (const Enumeration& one : library_.enumerations)
            Add(one);
        for (const Interface& one : library_.interfaces)
            Add(one);
        for (const Class& one : library_.classes)
            Add(one);
        Require(file_->SaveAllChanges(), "writing the file");
    }

private:
    ComPtr<ICreateTypeInfo> Create(const std::string& name, const std::string& id, const std::string& help,
                                   TYPEKIND kind)
    {
        ComPtr<ICreateTypeInfo> type;
        Require(file_->CreateTypeInfo(Name(name), kind, type.Out()), "adding " + name);
        Require(type->SetGuid(ToGuid(id)), "the identifier of " + name);
        if (!help.empty())
            Require(type->SetDocString(Name(help)), "the help text of " + name);
        return type;
    }

    /// A type is complete: others may name it.
    void Finish(const std::string& name, ICreateTypeInfo& type)
    {
        Require(type.LayOut(), "laying " + name + " out");
        ITypeInfo* made = nullptr;
        Require(type.QueryInterface(IID_ITypeInfo, reinterpret_cast<void**>(&made)), "reading " + name);
        types_[name] = ComPtr<ITypeInfo>::Attach(made);
    }

    static HREFTYPE Refer(ICreateTypeInfo& type, ITypeInfo& other)
    {
        HREFTYPE reference = 0;
        Require(type.AddRefTypeInfo(&other, &reference), "a reference to a type");
        return reference;
    }

    void Add(const Enumeration& one)
    {
        const auto type = Create(one.name, one.id, {}, TKIND_ENUM);
        UINT index = 0;
        for (const auto& [name, text] : one.values) {
            VARIANT value{};
            value.vt = VT_I4;
            value.lVal = std::stoi(text);
            VARDESC constant{};
            constant.memid = static_cast<MEMBERID>(0x40000000 + index);
            constant.varkind = VAR_CONST;
            constant.lpvarValue = &value;
            constant.elemdescVar.tdesc.vt = VT_INT;
            Require(type->AddVarDesc(index, &constant), "adding " + name);
            Require(type->SetVarName(index++, Name(name)), "naming " + name);
        }
        Finish(one.name, *type);
    }

    void Add(const Interface& one)
    {
        const auto type = Create(one.name, one.id, one.help, TKIND_INTERFACE);
        Require(type->AddImplType(0, Refer(*type, *unknown_)), "the base of " + one.name);
        UINT index = 0;
        for (const Method& method : one.methods)
            Add(*type, method, index++);
        Finish(one.name, *type);
    }

    void Add(ICreateTypeInfo& type, const Method& method, UINT index)
    {
        Arguments arguments;
        for (const Argument& argument : method.arguments)
            Describe(type, argument, arguments);
        FUNCDESC function{};
        function.memid = static_cast<MEMBERID>(0x60010000 + index);
        function.lprgelemdescParam = arguments.elements.data();
        function.funckind = FUNC_PUREVIRTUAL;
        function.invkind = INVOKE_FUNC;
        function.callconv = CC_STDCALL;
        function.cParams = static_cast<SHORT>(arguments.elements.size());
        function.cParamsOpt = arguments.optional;
        function.elemdescFunc.tdesc.vt = VT_HRESULT;
        Require(type.AddFuncDesc(index, &function), "adding " + method.name);

        std::vector<std::wstring> texts{ToWide(method.name)};
        for (const Argument& argument : method.arguments)
            texts.push_back(ToWide(argument.name));
        std::vector<wchar_t*> names;
        for (std::wstring& text : texts)
            names.push_back(text.data());
        Require(type.SetFuncAndParamNames(index, names.data(), static_cast<UINT>(names.size())),
                "naming " + method.name);
        Require(type.SetFuncDocString(index, Name(method.help)), "the help text of " + method.name);
    }

    void Describe(ICreateTypeInfo& type, const Argument& argument, Arguments& arguments)
    {
        ELEMDESC element{};
        element.tdesc = Describe(type, argument.type, argument.pointers - (argument.elements > 0 ? 1 : 0), arguments);
        if (argument.elements > 0) {
            ARRAYDESC& array = arguments.arrays.emplace_back();
            array.tdescElem = element.tdesc;
            array.cDims = 1;
            array.rgbounds[0] = {static_cast<ULONG>(argument.elements), 0};
            element.tdesc.vt = VT_CARRAY;
            element.tdesc.lpadesc = &array;
        }
        USHORT flags = 0;
        flags = static_cast<USHORT>(flags | (argument.in ? PARAMFLAG_FIN : 0) | (argument.out ? PARAMFLAG_FOUT : 0));
        if (argument.optional) {
            flags = static_cast<USHORT>(flags | PARAMFLAG_FOPT);
            ++arguments.optional;
        }
        if (argument.defaultValue) {
            PARAMDESCEX& value = arguments.defaults.emplace_back();
            value.cBytes = sizeof value;
            // A default of "" is a null string, one of 0 a null object: type libraries hold no objects.
            value.varDefaultValue.vt = argument.defaultValue->starts_with('"') ? VT_BSTR : VT_I4;
            element.paramdesc.pparamdescex = &value;
            flags = static_cast<USHORT>(flags | PARAMFLAG_FHASDEFAULT);
        }
        element.paramdesc.wParamFlags = flags;
        arguments.elements.push_back(element);
    }

    /// A type behind so many stars. An object is one star by itself.
    TYPEDESC Describe(ICreateTypeInfo& type, const std::string& name, int pointers, Arguments& arguments)
    {
        static const std::map<std::string, VARTYPE> basic = {
            {"float", VT_R4},  {"long", VT_I4},         {"int", VT_INT},         {"unsigned", VT_UINT},
            {"BSTR", VT_BSTR}, {"VARIANT", VT_VARIANT}, {"IUnknown", VT_UNKNOWN}};
        TYPEDESC described{};
        if (const auto found = basic.find(name); found != basic.end()) {
            described.vt = found->second;
            pointers -= described.vt == VT_UNKNOWN ? 1 : 0;
        } else if (const auto own = types_.find(name); own != types_.end()) {
            described.vt = VT_USERDEFINED;
            described.hreftype = Refer(type, *own->second);
        } else {
            throw std::runtime_error("the type " + name + " isn't known");
        }
        for (; pointers > 0; --pointers) {
            TYPEDESC& target = arguments.targets.emplace_back(described);
            described.vt = VT_PTR;
            described.lptdesc = &target;
        }
        return described;
    }

    void Add(const Class& one)
    {
        const auto type = Create(one.name, one.id, one.help, TKIND_COCLASS);
        Require(type->SetTypeFlags(TYPEFLAG_FCANCREATE), "the flags of " + one.name);
        UINT index = 0;
        for (const std::string& name : one.interfaces) {
            Require(type->AddImplType(index, Refer(*type, *types_.at(name))), "an interface of " + one.name);
            Require(type->SetImplTypeFlags(index, index == 0 ? IMPLTYPEFLAG_FDEFAULT : 0), "the flags of " + name);
            ++index;
        }
        Finish(one.name, *type);
    }

    const Library& library_;
    ComPtr<ICreateTypeLib2> file_;
    ComPtr<ITypeInfo> unknown_;
    std::map<std::string, ComPtr<ITypeInfo>> types_;
};

}  // namespace

void WriteTypeLibrary(const Library& library, const std::string& path)
{
    Require(CoInitialize(nullptr), "CoInitialize");
    Writer(library, path).Write();
    CoUninitialize();
}

}  // namespace tessara::idl
