#pragma once

#include "ModPub/ErrorResult.h"
#include "server/adapters/ComLogin.h"
#include "server/com/BString.h"
#include "server/com/Utf16.h"
#include "server/inproc/Automation.h"
#include "server/trace/SharedTraceFile.h"
#include "server/trace/TracedComEnvironment.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace server {

/// The text of a BSTR argument; null is the empty text.
inline std::string TextOf(BSTR text) { return ToUtf8({text ? text : L"", SysStringLen(text)}); }

/// A result text as VARIANT of type BSTR.
inline VariantHolder TextResult(const std::string& text) { return VariantHolder(text); }

/// One of the six classes as COM object: `Class` is the class, `Interface` its dual interface from the type library.
template <class Object, class Interface, class Class> class Coclass : public Automation<Object, Interface> {
public:
    HRESULT STDMETHODCALLTYPE Transact(BSTR sXml, IDispatch** login, VARIANT* result) override {
        if (!result)
            return AnswerNoPlace();
        VariantInit(result);
        return Answer([&] {
            const ComPtr<IDispatch> loginObject(login ? *login : nullptr);
            TextResult(RunTransact([&] { return TextOf(sXml); }, [&] { return loginObject; })).DetachTo(result);
        });
    }

    /// `Transact` for a late-bound client.
    VariantHolder CallTransact(const Arguments& arguments) {
        return TextResult(RunTransact([&] { return ToText(arguments[0]); }, [&] { return ToObject(arguments[1]); }));
    }

protected:
    Class& instance() noexcept { return class_; }

private:
    /// Arguments that cannot be read give an error result like every other failure.
    template <class ReadRequest, class ReadLogin>
    std::string RunTransact(ReadRequest&& readRequest, ReadLogin&& readLogin) {
        try {
            const std::string request = readRequest();
            ComPtr<IDispatch> object = readLogin();
            if (!object)
                return class_.Transact(request, nullptr);
            // The class refuses a call from inside of another; the login that it works with stays.
            if (inTransact_)
                return class_.Transact(request, nullptr);
            inTransact_ = true;
            // The former login goes when the call has ended: letting it go may bring another call.
            const std::optional<ComLogin> former =
                std::exchange(login_, std::optional<ComLogin>(ComLogin(DispatchObject(std::move(object)))));
            std::string result = class_.Transact(request, &*login_);
            inTransact_ = false;
            return result;
        } catch (...) {
            return ModPub::ErrorResult(environment_);
        }
    }

    /// Nothing where nothing is traced.
    std::unique_ptr<refhost::Trace> trace_ = OpenTrace();
    TracedComEnvironment environment_{trace_.get()};
    /// The latest login, always in the same place: the class reads it in later calls too.
    std::optional<ComLogin> login_;
    bool inTransact_ = false;
    Class class_{environment_};
};

} // namespace server
