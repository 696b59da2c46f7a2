#include "bench/parts/AllocatedBytes.h"
#include "refhost/eai/EaiHelper.h"
#include "refhost/xml/Document.h"

#include <array>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <libxml/parser.h>

namespace {

constexpr std::array fields = {"cWhCode",  "cInvCCode", "cInvCode",    "cInvHead",
                               "cDifHead", "cOutHead",  "cEnDispHead", "czyHead"};

std::string Request(std::int64_t rows) {
    std::string xml = "<qxinterface roottag=\"row\" docid=\"1\" proc=\"ADD\">\n";
    for (std::int64_t row = 0; row < rows; ++row) {
        xml += "  <row>\n";
        for (const char* field : fields)
            xml += "    <" + std::string(field) + ">" + std::to_string(1'000'000 + row) + "</" + field + ">\n";
        xml += "  </row>\n";
    }
    return xml + "</qxinterface>\n";
}

void CountBytes(benchmark::State& state, const std::string& xml) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(xml.size()));
}

/// Reads the request, with the bytes that a row takes as counter.
template <class Load> void Read(benchmark::State& state, const Load& load) {
    const std::string request = Request(state.range(0));
    for (auto _ : state) {
        const double before = AllocatedBytes();
        const auto document = load(request);
        state.counters["bytes/row"] = (AllocatedBytes() - before) / static_cast<double>(state.range(0));
    }
    CountBytes(state, request);
}

std::unique_ptr<refhost::xml::Document> LoadByOurs(const std::string& request) {
    auto document = std::make_unique<refhost::xml::Document>();
    benchmark::DoNotOptimize(document->LoadXML(request));
    return document;
}

void ReadRequest(benchmark::State& state) { Read(state, LoadByOurs); }

/// The comment has libxml2's parser read it.
void ReadCommentedRequest(benchmark::State& state) {
    Read(state, [](const std::string& request) { return LoadByOurs("<!---->" + request); });
}

/// The same by libxml2's own tree: what ours is held against.
struct FreeDocument {
    void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using LibxmlDocument = std::unique_ptr<xmlDoc, FreeDocument>;

LibxmlDocument LoadByLibxml(const std::string& request) {
    return LibxmlDocument(xmlReadMemory(request.data(), static_cast<int>(request.size()), nullptr, "UTF-8",
                                        XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_HUGE | XML_PARSE_NOBLANKS |
                                            XML_PARSE_COMPACT | XML_PARSE_NOWARNING));
}

void ReadRequestByLibxml(benchmark::State& state) { Read(state, LoadByLibxml); }

void ReadFieldsByLibxml(benchmark::State& state) {
    const LibxmlDocument document = LoadByLibxml(Request(state.range(0)));
    for (auto _ : state) {
        for (xmlNode* row = xmlDocGetRootElement(document.get())->children; row != nullptr; row = row->next) {
            for (const char* field : fields) {
                xmlNode* child = row->children;
                while (child != nullptr && !xmlStrEqual(child->name, BAD_CAST field))
                    child = child->next;
                xmlChar* content = xmlNodeGetContent(child);
                benchmark::DoNotOptimize(std::string(reinterpret_cast<const char*>(content)));
                xmlFree(content);
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * static_cast<std::int64_t>(fields.size()));
}

void ReadFields(benchmark::State& state) {
    refhost::xml::Document document;
    document.LoadXML(Request(state.range(0)));
    refhost::EaiHelper helper;
    for (auto _ : state) {
        for (const host::DOMNodePtr& row : document.DocumentElement()->SelectNodes("row")) {
            for (const char* field : fields)
                benchmark::DoNotOptimize(helper.GetChildText(row.get(), field));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * static_cast<std::int64_t>(fields.size()));
}

void AppendOutcomes(benchmark::State& state) {
    refhost::EaiHelper helper;
    for (auto _ : state) {
        refhost::xml::Document result;
        result.LoadXML(helper.MakeResultDoc("1", "ADD"));
        for (std::int64_t row = 0; row < state.range(0); ++row)
            helper.AddResultItem(result, "仓库编码：01， 存货编码：1000000", 0, "ok");
        benchmark::DoNotOptimize(result.DocumentElement());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void WriteRequest(benchmark::State& state) {
    refhost::xml::Document document;
    document.LoadXML(Request(state.range(0)));
    std::string written;
    for (auto _ : state) {
        written = document.Xml();
        benchmark::DoNotOptimize(written.data());
    }
    CountBytes(state, written);
}

BENCHMARK(ReadRequest)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadCommentedRequest)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadRequestByLibxml)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadFields)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadFieldsByLibxml)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(AppendOutcomes)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteRequest)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
