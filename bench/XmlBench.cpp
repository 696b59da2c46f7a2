#include "refhost/eai/EaiHelper.h"
#include "refhost/xml/Document.h"

#include <array>
#include <string>

#include <benchmark/benchmark.h>

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

void ReadRequest(benchmark::State& state) {
    const std::string request = Request(state.range(0));
    for (auto _ : state) {
        refhost::xml::Document document;
        benchmark::DoNotOptimize(document.LoadXML(request));
    }
    CountBytes(state, request);
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
BENCHMARK(ReadFields)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(AppendOutcomes)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(WriteRequest)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
