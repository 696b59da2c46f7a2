#pragma once

#include <string_view>

namespace importing::report {

/// The page's style sheet. On a narrow page a table's rows become blocks, each cell behind its heading; on paper
/// headings repeat on each sheet and rows stay whole.
inline constexpr std::string_view styleSheet = R"css(
:root { color-scheme: light; }
body { margin: 0 auto; max-width: 60rem; padding: 1rem; color: #1a1a1a; background: #fff; line-height: 1.5;
  font-family: "Noto Sans CJK SC", "Source Han Sans SC", "Microsoft YaHei", "PingFang SC", "WenQuanYi Micro Hei", sans-serif;
  overflow-wrap: anywhere; }
h1 { font-size: 1.6rem; margin: 0 0 .5rem; }
h2 { font-size: 1.15rem; margin: 2rem 0 .5rem; border-bottom: 2px solid #1f4e79; break-after: avoid; }
#outcome { margin: 0 0 1rem; padding: .6rem .8rem; border-left: .4rem solid #1f4e79; background: #eef4fa; }
#outcome.bad { border-color: #a61b1b; background: #fbeeee; }
#outcome p { margin: .15rem 0; }
#outcome p:first-child { font-size: 1.15rem; font-weight: bold; }
table { border-collapse: collapse; width: 100%; }
th, td { padding: .25rem .5rem; border-bottom: 1px solid #c8c8c8; text-align: left; vertical-align: top;
  unicode-bidi: isolate; }
thead th { border-bottom: 2px solid #555; white-space: nowrap; }
.figure { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
.cell { white-space: nowrap; }
.value span { white-space: pre-wrap; background: #f1f1f1; outline: 1px solid #d5d5d5; }
tr.sum td { border-top: 2px solid #555; border-bottom: 0; font-weight: bold; }
tr.part td:first-child { padding-left: 2rem; }
dl { display: grid; grid-template-columns: max-content minmax(0, 1fr); gap: .2rem 1rem; margin: 0; }
dt { color: #555; }
dd { margin: 0; }
#signatures { display: flex; flex-wrap: wrap; gap: 2rem; margin-top: 3rem; break-inside: avoid; }
#signatures div { flex: 1 1 12rem; border-bottom: 1px solid #1a1a1a; min-height: 2rem; }
@media screen and (max-width: 40rem) {
  dl { grid-template-columns: minmax(0, 1fr); gap: 0; }
  dd { margin-bottom: .4rem; }
  thead { display: none; }
  table, tbody, tr, td { display: block; }
  tr { padding: .4rem 0; border-bottom: 1px solid #c8c8c8; }
  td, tr.sum td { display: flex; justify-content: space-between; gap: 1rem; border: 0; padding: .1rem 0; white-space: normal; }
  tr.part td:first-child { padding-left: 0; }
  td:has(span:empty) { display: none; }
  td[data-heading=""] { font-weight: bold; }
  td::before { content: attr(data-heading); flex: none; color: #555; }
  td[data-heading=""]::before { content: none; }
  td span { text-align: right; min-width: 0; }
}
@page { size: A4; margin: 15mm; @bottom-right { content: counter(page) " / " counter(pages); } }
@media print {
  body { max-width: none; padding: 0; font-size: 10pt; }
  thead { display: table-header-group; }
  tr { break-inside: avoid; }
}
)css";

} // namespace importing::report
