#pragma once

#include "server/com/ComPtr.h"
#include "server/com/Platform.h"
#include "server/com/UnknownObject.h"
#include "server/com/VariantHolder.h"
#include "server/inproc/Module.h"

#include <cstddef>
#include <span>

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

/// A method that an automation object offers by name.
template <class Object> struct Method {
    const wchar_t* name;
    std::size_t leastArguments;
    std::size_t mostArguments;
    VariantHolder (Object::*call)(const Arguments& arguments);
};

/// Finds `name`, letter case ignored. @return its number, counted from 0, or -1
int FindName(const wchar_t* name, const wchar_t* const* names, std::size_t stride, std::size_t count) noexcept;

/// Converts an exception being handled into the answer of a failed call.
HRESULT AnswerException(EXCEPINFO* exception) noexcept;

/// What every automation object here is made of: it counts references, keeps the library loaded, and takes calls by
/// name for `Object::methods`, an array of `Method<Object>`. `Interface` is the object's dual interface, or IDispatch.
template <class Object, class Interface = IDispatch>
class Automation : public UnknownObject<Interface, ISupportErrorInfo> {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        // Every dual interface is an IDispatch too.
        return UnknownObject<Interface, ISupportErrorInfo>::QueryInterface(
            id == IID_IDispatch ? __uuidof(Interface) : id, object);
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
        return id == __uuidof(Interface) ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (!count)
            return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** information) override {
        if (information)
            *information = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
        if (!names || !ids)
            return E_POINTER;
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
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* exception, UINT*) override {
        if (!parameters)
            return E_POINTER;
        if (id < firstId || static_cast<std::size_t>(id - firstId) >= std::size(Object::methods))
            return DISP_E_MEMBERNOTFOUND;
        const Method<Object>& method = Object::methods[id - firstId];
        const Arguments arguments(*parameters);
        if (arguments.count() < method.leastArguments || arguments.count() > method.mostArguments)
            return DISP_E_BADPARAMCOUNT;
        for (std::size_t i = 0; i < method.leastArguments; ++i) {
            if (!arguments.Find(i))
                return DISP_E_PARAMNOTOPTIONAL;
        }
        ForgetErrorObject();
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
    ModuleReference module_;
};

} // namespace server
