#pragma once

#include "server/com/ComPtr.h"
#include "server/com/Platform.h"
#include "server/com/UnknownObject.h"
#include "server/com/VariantHolder.h"
#include "server/inproc/Exports.h"
#include "server/inproc/Module.h"
#include "server/inproc/TypeLibrary.h"

#include <concepts>
#include <cstddef>
#include <utility>

namespace server {

/// The arguments of one call, in the order of the parameters, however the client passes them: by position or by name,
/// by value, by reference, or as a reference to a Variant.
class Arguments {
public:
    explicit Arguments(const DISPPARAMS& parameters) noexcept : parameters_(parameters) {}

    std::size_t count() const noexcept { return parameters_.cArgs; }
    /// What was passed for the parameter at `index`, or nullptr.
    const VARIANT* Find(std::size_t index) const noexcept;
    /// The argument at `index`, which the caller has checked to be there.
    const VARIANT& operator[](std::size_t index) const noexcept { return *Find(index); }
    /// Whether the argument was given.
    bool Has(std::size_t index) const noexcept;
    /// Stores `value` where an argument refers to, converted to what is there; an argument passed by value is left
    /// alone.
    void Return(std::size_t index, const VariantHolder& value) const;

private:
    const DISPPARAMS& parameters_;
};

/// A member that an automation object offers by name.
template <class Object> struct Method {
    const wchar_t* name;
    std::size_t leastArguments;
    std::size_t mostArguments;
    VariantHolder (Object::*call)(const Arguments& arguments);
    /// The ways in which it may be invoked: DISPATCH_METHOD and so on.
    WORD ways = DISPATCH_METHOD;
};

/// Finds `name`, letter case ignored. @return its number, counted from 0, or -1
int FindName(const wchar_t* name, const wchar_t* const* names, std::size_t stride, std::size_t count) noexcept;

/// Whether every named argument names a parameter of `parameterCount`, and none that has its argument already.
/// @param flags as of `IDispatch::Invoke`; a property's new value has a name of its own
/// @param wrong receives the place of the first that does not; may be null
/// @return S_OK, DISP_E_PARAMNOTFOUND, or DISP_E_BADPARAMCOUNT for more names than arguments
HRESULT CheckNamedArguments(const DISPPARAMS& parameters, WORD flags, std::size_t parameterCount, UINT* wrong) noexcept;

/// Converts an exception being handled into the answer of a failed call.
HRESULT AnswerException(EXCEPINFO* exception) noexcept;

/// Runs what a client calls through an interface: what `action` throws becomes the HRESULT with an error information
/// object. An earlier error's is taken away.
template <class Action> HRESULT Answer(Action&& action) noexcept {
    ForgetErrorObject();
    try {
        std::forward<Action>(action)();
        return S_OK;
    } catch (...) {
        return SetErrorObject(CurrentError());
    }
}

/// The answer to a client that gives no place for the result. An earlier error's information is taken away.
inline HRESULT AnswerNoPlace() noexcept {
    ForgetErrorObject();
    return E_POINTER;
}

/// What every automation object here is made of: it counts references, keeps the library loaded, and takes calls by
/// name for `Object::methods`, an array of `Method<Object>`. Of a class that the library's type library describes it
/// tells the description too, by which clients know the class's name. `Interface` is the object's dual interface, or
/// IDispatch.
template <class Object, class Interface = IDispatch>
class Automation : public UnknownObject<Interface, ISupportErrorInfo, IProvideClassInfo> {
    using Base = UnknownObject<Interface, ISupportErrorInfo, IProvideClassInfo>;

public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (object && id == IID_IProvideClassInfo && !DescribedClass()) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        // Every dual interface is an IDispatch too.
        return Base::QueryInterface(id == IID_IDispatch ? __uuidof(Interface) : id, object);
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
        return id == __uuidof(Interface) ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** information) override {
        if (!information)
            return AnswerNoPlace();
        *information = nullptr;
        return Answer([&] { *information = LoadTypeInfo(*DescribedClass()).Detach(); });
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count)
            return AnswerNoPlace();
        *count = DescribedClass() ? 1 : 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** information) override {
        if (!information)
            return AnswerNoPlace();
        *information = nullptr;
        if (!DescribedClass())
            return E_NOTIMPL;
        if (index != 0)
            return DISP_E_BADINDEX;
        return Answer([&] { *information = LoadDefaultInterface(*DescribedClass()).Detach(); });
    }

    /// Knows the names of parameters too, as the type library tells them.
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        if (reserved != IID_NULL)
            return DISP_E_UNKNOWNINTERFACE;
        if (!names || !ids)
            return AnswerNoPlace();
        if (count > 1 && DescribedClass()) {
            HRESULT found = S_OK;
            const HRESULT looked =
                Answer([&] { found = LoadDefaultInterface(*DescribedClass())->GetIDsOfNames(names, count, ids); });
            return FAILED(looked) ? looked : found;
        }
        for (UINT i = 0; i < count; ++i)
            ids[i] = DISPID_UNKNOWN;
        const int found = count == 0 ? -1
                                     : FindName(names[0], &Object::methods[0].name, sizeof(Object::methods[0]),
                                                std::size(Object::methods));
        if (found < 0)
            return DISP_E_UNKNOWNNAME;
        ids[0] = firstId + found;
        return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        ForgetErrorObject();
        if (reserved != IID_NULL)
            return DISP_E_UNKNOWNINTERFACE;
        if (!parameters)
            return E_POINTER;
        if (id < firstId || static_cast<std::size_t>(id - firstId) >= std::size(Object::methods))
            return DISP_E_MEMBERNOTFOUND;
        const Method<Object>& method = Object::methods[id - firstId];
        if ((flags & method.ways) == 0)
            return DISP_E_MEMBERNOTFOUND;
        const Arguments arguments(*parameters);
        if (arguments.count() < method.leastArguments || arguments.count() > method.mostArguments)
            return DISP_E_BADPARAMCOUNT;
        if (const HRESULT named = CheckNamedArguments(*parameters, flags, method.mostArguments, wrongArgument);
            FAILED(named))
            return named;
        for (std::size_t i = 0; i < method.leastArguments; ++i) {
            if (!arguments.Find(i))
                return DISP_E_PARAMNOTOPTIONAL;
        }
        try {
            VariantHolder value = (static_cast<Object*>(this)->*method.call)(arguments);
            if (result)
                value.DetachTo(result);
            return S_OK;
        } catch (...) {
            return AnswerException(exception);
        }
    }

protected:
    static constexpr DISPID firstId = 1;

private:
    /// The identifier of the object's class in the type library; null when that does not describe it.
    static const CLSID* DescribedClass() noexcept {
        // A class that clients create needs nothing to be made of.
        if constexpr (std::default_initializable<Object>) {
            const Registrant& library = LibraryContents();
            for (const ClassEntry& entry : library.classes) {
                if (library.typeLibrary && entry.create == &CreateObject<Object>)
                    return entry.classId;
            }
        }
        return nullptr;
    }

    ModuleReference module_;
};

} // namespace server
