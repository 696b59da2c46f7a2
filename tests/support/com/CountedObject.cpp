#include "tests/support/com/CountedObject.h"

#include "tests/support/com/ForwardingObject.h"

#include <utility>

namespace test {

namespace {

using server::ComPtr;

class CountedObject final : public ForwardingObject {
public:
    CountedObject(ComPtr<IDispatch> object, std::wstring type, CallCounts& counts, bool isComponent)
        : ForwardingObject(std::move(object)), type_(std::move(type)), counts_(counts), isComponent_(isComponent) {}

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override {
        if (counts_.withinComponents == 0)
            ++counts_.lookUps[type_ + L"." + names[0]];
        const HRESULT found = ForwardingObject::GetIDsOfNames(id, names, count, locale, ids);
        if (SUCCEEDED(found))
            Names()[{type_, ids[0]}] = names[0];
        return found;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        const std::wstring& name = Names()[{type_, member}];
        if (counts_.withinComponents == 0)
            ++counts_.calls[type_ + L"." + name];
        const int within = isComponent_ ? 1 : 0;
        counts_.withinComponents += within;
        const HRESULT status =
            ForwardingObject::Invoke(member, id, locale, flags, parameters, result, exception, wrongArgument);
        counts_.withinComponents -= within;
        if (!isComponent_ && SUCCEEDED(status) && result && V_VT(result) == VT_DISPATCH && V_DISPATCH(result))
            V_DISPATCH(result) = Counted(ComPtr<IDispatch>::Adopt(V_DISPATCH(result)), name, counts_).Detach();
        return status;
    }

private:
    /// The names of numbers that were looked up, by their type.
    static std::map<std::pair<std::wstring, DISPID>, std::wstring>& Names() {
        thread_local std::map<std::pair<std::wstring, DISPID>, std::wstring> names;
        return names;
    }

    std::wstring type_;
    CallCounts& counts_;
    bool isComponent_;
};

} // namespace

ComPtr<IDispatch> Counted(ComPtr<IDispatch> object, std::wstring type, CallCounts& counts) {
    return ComPtr<IDispatch>::Adopt(new CountedObject(std::move(object), std::move(type), counts, false));
}

ComPtr<IDispatch> CountedComponent(ComPtr<IDispatch> object, std::wstring type, CallCounts& counts) {
    return ComPtr<IDispatch>::Adopt(new CountedObject(std::move(object), std::move(type), counts, true));
}

} // namespace test
