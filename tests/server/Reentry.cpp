#include "tests/server/Reentry.h"

#include "server/adapters/ProgIds.h"
#include "tests/support/com/ForwardingObject.h"

#include <utility>

namespace test {

namespace {

using server::ComPtr;

/// Does as `object` does, and calls back before every call of it.
class CallingBack final : public ForwardingObject {
public:
    CallingBack(ComPtr<IDispatch> object, std::function<void()> callBack)
        : ForwardingObject(std::move(object)), callBack_(std::move(callBack)) {}

    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override {
        callBack_();
        return ForwardingObject::Invoke(member, id, locale, flags, parameters, result, exception, wrongArgument);
    }

private:
    std::function<void()> callBack_;
};

} // namespace

Reentry::Reentry(std::function<void()> callBack) : callBack_(std::move(callBack)) {
    namespace progid = server::progid;
    for (const wchar_t* const name :
         {progid::connection, progid::recordset, progid::eaiHelper, progid::eaiXmlConverter, progid::iaVoucherService,
          progid::provisionPreCheck, progid::rsXmlHelper, progid::zendaT}) {
        const std::size_t at = classes_.size();
        classes_.push_back(
            std::make_unique<ReplacedClass>(name, [this, at] { return Wrap(classes_[at]->Original()); }));
    }
}

server::DispatchObject Reentry::Wrap(const server::DispatchObject& object) {
    return server::DispatchObject(Wrap(object.object()));
}

ComPtr<IDispatch> Reentry::Wrap(ComPtr<IDispatch> object) {
    return ComPtr<IDispatch>::Adopt(new CallingBack(std::move(object), [this] { CallBack(); }));
}

void Reentry::CallBack() {
    if (std::exchange(inside_, true))
        return;
    callBack_();
    inside_ = false;
}

} // namespace test
