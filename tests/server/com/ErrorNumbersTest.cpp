// The numbers of failed calls, against those that VBScript shows of the same failures.
#include "server/com/BString.h"
#include "server/com/ComError.h"
#include "server/com/UnknownObject.h"
#include "tests/support/com/HostedFixture.h"

#include <map>
#include <string>

#include <activscp.h>

#ifdef _WIN64
using ScriptParser = IActiveScriptParse64;
#else
using ScriptParser = IActiveScriptParse32;
#endif

namespace {

using server::ComPtr;
using server::DispatchObject;
using server::VariantHolder;

/// An object each of whose members answers with the HRESULT that it is given: in a call, or once for all.
class Failing final : public server::UnknownObject<IDispatch> {
public:
    explicit Failing(HRESULT always = S_OK) : always_(always) {}

    /// What the script noted for each HRESULT.
    std::map<HRESULT, host::ErrorNumber> noted;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        ids[0] = std::wstring_view(names[0]) == L"Note" ? note : answer;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        if (FAILED(always_))
            return always_;
        const auto given = [&](UINT place) { return server::ToInt(parameters->rgvarg[parameters->cArgs - 1 - place]); };
        if (member == answer)
            return given(0);
        noted[given(0)] = given(1);
        return S_OK;
    }

private:
    static constexpr DISPID answer = 1;
    static constexpr DISPID note = 2;

    HRESULT always_;
};

/// What the script engine asks of its host: the object "target", and where errors go.
class Site final : public server::UnknownObject<IActiveScriptSite> {
public:
    explicit Site(ComPtr<IDispatch> target) : target_(std::move(target)) {}

    HRESULT STDMETHODCALLTYPE GetLCID(LCID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD wanted, IUnknown** item, ITypeInfo**) override {
        if ((wanted & SCRIPTINFO_IUNKNOWN) == 0)
            return E_NOTIMPL;
        *item = ComPtr<IDispatch>(target_).Detach();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError*) override {
        ADD_FAILURE() << "an error ended the script";
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

private:
    ComPtr<IDispatch> target_;
};

/// Runs a VBScript that knows `target`.
void RunScript(const std::wstring& script, const ComPtr<IDispatch>& target) {
    CLSID engineId{};
    ASSERT_EQ(CLSIDFromProgID(L"VBScript", &engineId), S_OK);
    ComPtr<IActiveScript> engine;
    ASSERT_EQ(CoCreateInstance(engineId, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript, engine.PutVoid()), S_OK);
    const auto site = ComPtr<IActiveScriptSite>::Adopt(new Site(target));
    ASSERT_EQ(engine->SetScriptSite(site.Get()), S_OK);
    const ComPtr<ScriptParser> parser = engine.As<ScriptParser>();
    ASSERT_EQ(parser->InitNew(), S_OK);
    ASSERT_EQ(engine->AddNamedItem(L"target", SCRIPTITEM_ISVISIBLE), S_OK);
    EXPECT_EQ(parser->ParseScriptText(script.c_str(), nullptr, nullptr, nullptr, 0, 0, 0, nullptr, nullptr), S_OK);
    EXPECT_EQ(engine->SetScriptState(SCRIPTSTATE_STARTED), S_OK);
    engine->Close();
}

struct Expected {
    unsigned long result;
    host::ErrorNumber number;
    /// Why a script shows another number here; null when it shows the same.
    const char* difference = nullptr;
};

/// By hand, from the numbers that VBScript documents for its own errors.
constexpr Expected expected[] = {
    {0x80004001, 445},                               // E_NOTIMPL
    {0x80004002, 430},                               // E_NOINTERFACE
    {0x80070005, 70},                                // E_ACCESSDENIED
    {0x8007000E, 7},                                 // E_OUTOFMEMORY
    {0x80070057, 5},                                 // E_INVALIDARG
    {0x80020003, 438},                               // DISP_E_MEMBERNOTFOUND
    {0x80020004, 448},                               // DISP_E_PARAMNOTFOUND
    {0x80020005, 13},                                // DISP_E_TYPEMISMATCH
    {0x80020006, 438},                               // DISP_E_UNKNOWNNAME
    {0x80020007, 446},                               // DISP_E_NONAMEDARGS
    {0x80020008, 458},                               // DISP_E_BADVARTYPE
    {0x8002000A, 6},                                 // DISP_E_OVERFLOW
    {0x8002000B, 9},                                 // DISP_E_BADINDEX
    {0x8002000C, 447},                               // DISP_E_UNKNOWNLCID
    {0x8002000D, 10},                                // DISP_E_ARRAYISLOCKED
    {0x8002000E, 450},                               // DISP_E_BADPARAMCOUNT
    {0x8002000F, 449},                               // DISP_E_PARAMNOTOPTIONAL
    {0x80020011, 451},                               // DISP_E_NOTACOLLECTION
    {0x80020012, 11, "Wine's engine leaves it out"}, // DISP_E_DIVBYZERO
    {0x800706BA, 462},                               // RPC server unavailable
    {0x80040154, 429},                               // REGDB_E_CLASSNOTREG
    {0x800401F3, 429},                               // CO_E_CLASSSTRING
    // A component that cannot be made is 429 here, whatever kept it.
    {0x80040111, 429, "Wine's engine leaves it out"}, // CLASS_E_CLASSNOTAVAILABLE
    {0x800401F8, 429, "scripts show it as it is"},    // CO_E_DLLNOTFOUND
    {0x80004005, -2147467259},                        // E_FAIL
    {0x8000FFFF, -2147418113},                        // E_UNEXPECTED
    {0x80004003, -2147467261},                        // E_POINTER
    {0x80040E14, -2147217900},                        // DB_E_ERRORSINCOMMAND
    {0x800A0E79, 3705},                               // ADO's
};

using ErrorNumbers = test::HostedTest;

} // namespace

TEST_F(ErrorNumbers, AreThoseThatVBScriptShows) {
    auto* const failing = new Failing;
    const ComPtr<IDispatch> target = ComPtr<IDispatch>::Adopt(failing);
    std::wstring script = L"On Error Resume Next\n";
    for (const Expected& each : expected) {
        const std::wstring number = std::to_wstring(static_cast<HRESULT>(each.result));
        script += L"Err.Clear\ntarget.Answer " + number + L"\ntarget.Note " + number + L", Err.Number\n";
    }
    RunScript(script, target);
    EXPECT_EQ(failing->noted.size(), std::size(expected));
    for (const Expected& each : expected) {
        const host::ErrorNumber shown = failing->noted[static_cast<HRESULT>(each.result)];
        EXPECT_EQ(shown != each.number, each.difference != nullptr)
            << std::hex << each.result << std::dec << " is shown as " << shown << " and not as " << each.number;
    }
}

TEST_F(ErrorNumbers, AreThoseOfTheErrorResult) {
    for (const Expected& each : expected) {
        const auto login = ComPtr<IDispatch>::Adopt(new Failing(static_cast<HRESULT>(each.result)));
        const std::string result =
            test::Transact(L"Kovra.ClsInvSubject", VariantHolder(std::string("<a/>")), DispatchObject(login));
        EXPECT_TRUE(result.starts_with("<error code=\"" + std::to_string(each.number) + "\" dsc=\"")) << result;
        EXPECT_EQ(result.find("dsc=\"\""), std::string::npos) << result;
    }
}
