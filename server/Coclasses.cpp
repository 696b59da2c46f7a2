// The six classes as COM objects.
#include "ClsInvSubject/ClsInvSubject.h"
#include "ClsKovra/ClsKovra.h"
#include "ClsKovraProof/ClsKovraProof.h"
#include "ClsOppSubject/ClsOppSubject.h"
#include "ClsOppSubjectST/ClsOppSubjectST.h"
#include "ClsPriceJustVou/ClsPriceJustVou.h"
#include "ModPub/Conversions.h"
#include "server/Coclass.h"
#include "server/adapters/XmlDocument.h"
#include "server/adapters/XmlNode.h"
#include "server/inproc/Exports.h"

#include <Kovra.h>

namespace server {

namespace {

class InvSubject final : public Coclass<InvSubject, _ClsInvSubject, kovra::ClsInvSubject> {
public:
    static constexpr Method<InvSubject> methods[] = {{L"Transact", 2, 2, &InvSubject::CallTransact}};
};

class OppSubject final : public Coclass<OppSubject, _ClsOppSubject, kovra::ClsOppSubject> {
public:
    static constexpr Method<OppSubject> methods[] = {{L"Transact", 2, 2, &OppSubject::CallTransact}};
};

class OppSubjectST final : public Coclass<OppSubjectST, _ClsOppSubjectST, kovra::ClsOppSubjectST> {
public:
    static constexpr Method<OppSubjectST> methods[] = {{L"Transact", 2, 2, &OppSubjectST::CallTransact}};
};

class OpeningBalances final : public Coclass<OpeningBalances, _ClsKovra, kovra::ClsKovra> {
public:
    HRESULT STDMETHODCALLTYPE InvCodeIsTorF(BSTR cCode, BSTR cType, VARIANT_BOOL* result) override {
        if (!result)
            return AnswerNoPlace();
        *result = VARIANT_FALSE;
        return Answer(
            [&] { *result = instance().InvCodeIsTorF(TextOf(cCode), TextOf(cType)) ? VARIANT_TRUE : VARIANT_FALSE; });
    }

    VariantHolder CallInvCodeIsTorF(const Arguments& arguments) {
        return VariantHolder(instance().InvCodeIsTorF(ToText(arguments[0]), ToText(arguments[1])));
    }

    static constexpr Method<OpeningBalances> methods[] = {
        {L"Transact", 2, 2, &OpeningBalances::CallTransact},
        {L"InvCodeIsTorF", 2, 2, &OpeningBalances::CallInvCodeIsTorF},
    };
};

class Proof final : public Coclass<Proof, _ClsKovraProof, kovra::ClsKovraProof> {
public:
    HRESULT STDMETHODCALLTYPE GetRetString(IDispatch** Dom, BSTR* result) override {
        if (!result)
            return AnswerNoPlace();
        *result = nullptr;
        return Answer([&] { *result = BString(ToUtf16(RetString(ComPtr(Dom ? *Dom : nullptr)))).Detach(); });
    }

    HRESULT STDMETHODCALLTYPE VerifyDomH(IDispatch**, IDispatch**, VARIANT* result) override {
        if (!result)
            return AnswerNoPlace();
        return Answer([&] { VerificationResult().DetachTo(result); });
    }

    HRESULT STDMETHODCALLTYPE QueryProc(IDispatch** eleList, BSTR* sRetXml, VARIANT_BOOL* result) override {
        if (!sRetXml || !result)
            return AnswerNoPlace();
        *result = VARIANT_FALSE;
        return Answer([&] {
            std::string envelope = TextOf(*sRetXml);
            *result = Query(ComPtr(eleList ? *eleList : nullptr), envelope) ? VARIANT_TRUE : VARIANT_FALSE;
            BString filled(ToUtf16(envelope));
            BString::Adopt(*sRetXml);
            *sRetXml = filled.Detach();
        });
    }

    VariantHolder CallGetRetString(const Arguments& arguments) {
        return VariantHolder(RetString(ToObject(arguments[0])));
    }
    VariantHolder CallVerifyDomH(const Arguments&) { return VerificationResult(); }
    VariantHolder CallQueryProc(const Arguments& arguments) {
        std::string envelope = ToText(arguments[1]);
        const bool result = Query(ToObject(arguments[0]), envelope);
        arguments.Return(1, VariantHolder(envelope));
        return VariantHolder(result);
    }

    static constexpr Method<Proof> methods[] = {
        {L"Transact", 2, 2, &Proof::CallTransact},
        {L"GetRetString", 1, 1, &Proof::CallGetRetString},
        {L"VerifyDomH", 2, 2, &Proof::CallVerifyDomH},
        {L"QueryProc", 2, 2, &Proof::CallQueryProc},
    };

private:
    static std::string RetString(const ComPtr<IDispatch>& document) {
        return kovra::ClsKovraProof::GetRetString(XmlDocument(document.As<IXMLDOMDocument>()));
    }

    static VariantHolder VerificationResult() {
        return VariantHolder(kovra::ClsKovraProof::VerifyDomH(nullptr, nullptr));
    }

    bool Query(const ComPtr<IDispatch>& list, std::string& envelope) {
        host::DOMNodeList conditions;
        const auto read = [&]() -> const host::DOMNodeList& {
            const ComPtr<IXMLDOMNodeList> nodes = list.As<IXMLDOMNodeList>();
            ThrowIfFailed(nodes->reset());
            return conditions = WrapNodes(*nodes.Get());
        };
        return instance().QueryProc(read, envelope);
    }
};

class PriceJustVou final : public Coclass<PriceJustVou, _ClsPriceJustVou, kovra::ClsPriceJustVou> {
public:
    HRESULT STDMETHODCALLTYPE GetStartEndDate(short* intMonth, short* intYear, VARIANT* varStart, VARIANT* varEnd,
                                              VARIANT_BOOL* result) override {
        if (!intMonth || !intYear || !result)
            return AnswerNoPlace();
        *result = VARIANT_FALSE;
        return Answer([&] {
            VARIANTARG reversed[4];
            const auto pass = [](VARIANT* argument, VARIANTARG& reference) {
                V_VT(&reference) = argument ? VT_BYREF | VT_VARIANT : VT_ERROR;
                V_VARIANTREF(&reference) = argument;
                if (!argument)
                    V_ERROR(&reference) = DISP_E_PARAMNOTFOUND;
            };
            pass(varEnd, reversed[0]);
            pass(varStart, reversed[1]);
            V_VT(&reversed[2]) = VT_BYREF | VT_I2;
            V_I2REF(&reversed[2]) = intYear;
            V_VT(&reversed[3]) = VT_BYREF | VT_I2;
            V_I2REF(&reversed[3]) = intMonth;
            const DISPPARAMS parameters{reversed, nullptr, 4, 0};
            *result = V_BOOL(&CallGetStartEndDate(Arguments(parameters)).Get());
        });
    }

    VariantHolder CallGetStartEndDate(const Arguments& arguments) {
        host::Value start;
        host::Value end;
        const bool found =
            instance().GetStartEndDate(ModPub::ToInt16(ToValue(arguments[0])), ModPub::ToInt16(ToValue(arguments[1])),
                                       arguments.Has(2) ? &start : nullptr, arguments.Has(3) ? &end : nullptr);
        if (found && arguments.Has(2))
            arguments.Return(2, VariantHolder(start));
        if (found && arguments.Has(3))
            arguments.Return(3, VariantHolder(end));
        return VariantHolder(found);
    }

    static constexpr Method<PriceJustVou> methods[] = {
        {L"Transact", 2, 2, &PriceJustVou::CallTransact},
        {L"GetStartEndDate", 2, 4, &PriceJustVou::CallGetStartEndDate},
    };
};

/// The identifier of the classes as an application.
constexpr GUID application = {0xA913E70F, 0x77A7, 0x414C, {0xB7, 0x4C, 0x37, 0x71, 0x78, 0xCF, 0x58, 0xCF}};

/// Every class, with its interface of the same name from Kovra.idl.
constexpr ClassEntry classes[] = {
    {&CLSID_ClsInvSubject, L"Kovra.ClsInvSubject", &CreateObject<InvSubject>, &IID__ClsInvSubject},
    {&CLSID_ClsOppSubject, L"Kovra.ClsOppSubject", &CreateObject<OppSubject>, &IID__ClsOppSubject},
    {&CLSID_ClsOppSubjectST, L"Kovra.ClsOppSubjectST", &CreateObject<OppSubjectST>, &IID__ClsOppSubjectST},
    {&CLSID_ClsKovra, L"Kovra.ClsKovra", &CreateObject<OpeningBalances>, &IID__ClsKovra},
    {&CLSID_ClsKovraProof, L"Kovra.ClsKovraProof", &CreateObject<Proof>, &IID__ClsKovraProof},
    {&CLSID_ClsPriceJustVou, L"Kovra.ClsPriceJustVou", &CreateObject<PriceJustVou>, &IID__ClsPriceJustVou},
};

} // namespace

const Registrant& LibraryContents() noexcept {
    static const Registrant contents{
        .classes = classes, .typeLibrary = &LIBID_Kovra, .typeLibraryName = L"Kovra", .application = &application};
    return contents;
}

} // namespace server
