// The documents' own table of functions, which only the C form of the interface shows.
#define CINTERFACE
#include "tests/server/LoadXmlRecorder.h"

#include <stdexcept>

// clang-format off
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>
#include <msxml.h>
// clang-format on

namespace test {

namespace {

using LoadXml = HRESULT(STDMETHODCALLTYPE*)(IXMLDOMDocument*, BSTR, VARIANT_BOOL*);

LoadXml* entry = nullptr;
LoadXml original = nullptr;
std::vector<std::wstring> texts;

HRESULT STDMETHODCALLTYPE Record(IXMLDOMDocument* document, BSTR text, VARIANT_BOOL* loaded) {
    texts.emplace_back(text, SysStringLen(text));
    return original(document, text, loaded);
}

void SetEntry(LoadXml function) {
    DWORD protection = 0;
    if (!VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection))
        throw std::runtime_error("the documents' table of functions cannot be written");
    *entry = function;
    VirtualProtect(entry, sizeof *entry, protection, &protection);
}

/// Where the table of functions, which all documents share, names `loadXML`.
LoadXml* FindEntry() {
    CLSID classId{};
    void* object = nullptr;
    if (FAILED(CLSIDFromProgID(L"Msxml2.DOMDocument", &classId)) ||
        FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, &object)))
        throw std::runtime_error("there is no MSXML");
    auto* document = static_cast<IXMLDOMDocument*>(object);
    LoadXml* found = &document->lpVtbl->loadXML;
    document->lpVtbl->Release(document);
    return found;
}

} // namespace

LoadXmlRecorder::LoadXmlRecorder() {
    texts.clear();
    entry = FindEntry();
    original = *entry;
    SetEntry(Record);
}

LoadXmlRecorder::~LoadXmlRecorder() { SetEntry(original); }

const std::vector<std::wstring>& LoadXmlRecorder::Texts() const { return texts; }

} // namespace test
