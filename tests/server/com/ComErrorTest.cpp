// How failures of COM calls become errors, and errors HRESULTs.
#include "server/com/BString.h"
#include "server/com/DispatchObject.h"
#include "server/com/UnknownObject.h"
#include "tests/support/com/ExpectError.h"

#include <functional>
#include <utility>

namespace {

using server::ComPtr;
using server::DispatchObject;
using test::ExpectError;

constexpr std::string_view unknownError = "应用程序定义或对象定义错误";
/// The program's own: the system has no text for it.
constexpr HRESULT ownResult = static_cast<HRESULT>(0x80049ABC);

/// An object whose one member answers as a test says.
class Answering final : public server::UnknownObject<IDispatch> {
public:
    using Answer = std::function<HRESULT(EXCEPINFO& exception)>;
    explicit Answering(Answer answer) : answer_(std::move(answer)) {}

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override {
        ids[0] = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO* exception,
                                     UINT*) override {
        return answer_(*exception);
    }

private:
    Answer answer_;
};

/// Calls a member that answers so.
void Call(Answering::Answer answer) {
    DispatchObject(ComPtr<IDispatch>::Adopt(new Answering(std::move(answer)))).Call(L"Member");
}

BSTR Text(std::wstring_view text) { return server::BString(text).Detach(); }

HRESULT STDAPICALLTYPE FillInLater(EXCEPINFO* exception) {
    exception->scode = static_cast<HRESULT>(0x800A0BCD);
    exception->bstrDescription = Text(L"late");
    return S_OK;
}

} // namespace

TEST(ComError, NumbersOfHresults) {
    const std::pair<unsigned long, host::ErrorNumber> both[] = {
        {0x800A0005, 5},     {0x800A0E79, 3705},        {0x800A01AD, 429},
        {0x800AFFFF, 65535}, {0x80004005, -2147467259}, {0x80040E14, -2147217900},
    };
    for (const auto& [result, number] : both) {
        EXPECT_EQ(server::ErrorNumberOf(static_cast<HRESULT>(result)), number);
        EXPECT_EQ(server::HresultOf(number), static_cast<HRESULT>(result));
    }
    const std::pair<HRESULT, host::ErrorNumber> runtime[] = {
        {DISP_E_UNKNOWNNAME, 438}, {DISP_E_MEMBERNOTFOUND, 438}, {DISP_E_TYPEMISMATCH, 13},  {E_NOINTERFACE, 430},
        {DISP_E_OVERFLOW, 6},      {E_OUTOFMEMORY, 7},           {REGDB_E_CLASSNOTREG, 429}, {CO_E_CLASSSTRING, 429},
    };
    for (const auto& [result, number] : runtime)
        EXPECT_EQ(server::ErrorNumberOf(result), number);
}

TEST(ComError, RaisedErrorsCarryTheirDescription) {
    ExpectError(-2147467259, "no link", [] {
        Call([](EXCEPINFO& exception) {
            exception.scode = E_FAIL;
            exception.bstrDescription = Text(L"no link");
            exception.bstrSource = Text(L"source");
            exception.bstrHelpFile = Text(L"help");
            return DISP_E_EXCEPTION;
        });
    });
    ExpectError(1001, "by number", [] {
        Call([](EXCEPINFO& exception) {
            exception.wCode = 1001;
            exception.bstrDescription = Text(L"by number");
            return DISP_E_EXCEPTION;
        });
    });
    ExpectError(3021, "late", [] {
        Call([](EXCEPINFO& exception) {
            exception.pfnDeferredFillIn = FillInLater;
            return DISP_E_EXCEPTION;
        });
    });
}

TEST(ComError, ErrorWithoutADescriptionGetsOne) {
    const auto raise = [](HRESULT result) {
        Call([result](EXCEPINFO& exception) {
            exception.scode = result;
            return DISP_E_EXCEPTION;
        });
    };
    ExpectError(13, "类型不匹配", [&] { raise(DISP_E_TYPEMISMATCH); });
    ExpectError(ownResult, unknownError, [&] { raise(ownResult); });
    ExpectError(ownResult, unknownError, [] { server::ThrowIfFailed(ownResult); });
    try {
        raise(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
        ADD_FAILURE() << "no error";
    } catch (const host::Error& error) {
        EXPECT_EQ(error.number(), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
        EXPECT_NE(error.description(), unknownError) << "the system has a text";
        EXPECT_FALSE(error.description().empty());
    }
}

// 0 is the code of what went well.
TEST(ComError, ErrorWithoutANumberIsNotError0) {
    for (const HRESULT none : {S_OK, S_FALSE, HRESULT{70000}}) {
        ExpectError(DISP_E_EXCEPTION, "something", [none] {
            Call([none](EXCEPINFO& exception) {
                exception.scode = none;
                exception.bstrDescription = Text(L"something");
                return DISP_E_EXCEPTION;
            });
        });
    }
}

TEST(ComError, NoCallLeavesADescriptionForALaterFailure) {
    ExpectError(ownResult, "of this one", [] {
        Call([](EXCEPINFO&) {
            server::SetErrorObject(host::Error(7, "of this one"));
            return ownResult;
        });
    });
    for (const HRESULT result : {S_OK, DISP_E_EXCEPTION, ownResult}) {
        const auto leave = [result] {
            Call([result](EXCEPINFO& exception) {
                server::SetErrorObject(host::Error(7, "An earlier failure."));
                exception.scode = E_FAIL;
                return result;
            });
        };
        if (SUCCEEDED(result))
            leave();
        else
            EXPECT_THROW(leave(), host::Error);
        ExpectError(ownResult, unknownError, [] { server::ThrowIfFailed(ownResult); });
    }
}
