// Topics' HTML as documents: 21 MB of bodies of 4.2 KB, each parsed as a link check or a rewrite does, beside what the
// parser below takes alone. The figures are to be read side by side, from one run.
#include <benchmark/benchmark.h>
#include <gumbo.h>

#include <string>
#include <vector>

#include "quillbook/frame/documents/HtmlDocument.h"
#include "quillbook/frame/documents/HtmlElement.h"

namespace quillbook {
namespace {

constexpr std::size_t topics = 5'000;

std::string Body(std::size_t number) {
  std::string body;
  while (body.size() < 4'200) {
    const auto next = std::to_string(number++ % topics);
    body +=
        "<h2 id=\"s" + next + "\">Little and often</h2>\r\n<p class=\"note\">Help is read by people who are in the ";
    body += "middle of <b>something else</b>. The page says what to do &amp; <a href=\"topic" + next + ".html\">where ";
    body +=
        "to go on</a>.&nbsp;</p>\r\n<ul>\r\n  <li>Water in the morning</li>\r\n  <li>Look at the "
        "soil</li>\r\n</ul>\r\n";
  }
  return body;
}

const std::vector<std::string>& Bodies() {
  static const auto bodies = [] {
    std::vector<std::string> made;
    for (std::size_t i = 0; i < topics; ++i) made.push_back(Body(i * 7919));
    return made;
  }();
  return bodies;
}

void CountBytes(benchmark::State& state) {
  std::size_t size = 0;
  for (const auto& body : Bodies()) size += body.size();
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * size));
}

void Parse_Library(benchmark::State& state) {
  Bodies();
  for (auto _ : state) {
    for (const auto& body : Bodies()) {
      auto* output = gumbo_parse_with_options(&kGumboDefaultOptions, body.data(), body.size());
      benchmark::DoNotOptimize(output);
      gumbo_destroy_output(&kGumboDefaultOptions, output);
    }
  }
  CountBytes(state);
}

void Parse_Document(benchmark::State& state) {
  Bodies();
  for (auto _ : state)
    for (const auto& body : Bodies()) {
      const auto document = New<HtmlDocument>();
      document->Load(body);
      benchmark::DoNotOptimize(document->readyState());
    }
  CountBytes(state);
}

void ParseAndWrite_Document(benchmark::State& state) {
  Bodies();
  for (auto _ : state)
    for (const auto& body : Bodies()) {
      const auto document = New<HtmlDocument>();
      document->Load(body);
      benchmark::DoNotOptimize(document->body()->innerHTML().size());
    }
  CountBytes(state);
}

void ParseAndResolveLinks_Document(benchmark::State& state) {
  Bodies();
  for (auto _ : state)
    for (const auto& body : Bodies()) {
      const auto document = New<HtmlDocument>();
      document->Load(body);
      const auto links = document->All()->tags("A");
      for (const auto& link : *links) benchmark::DoNotOptimize(link->getAttribute("href", 0).size());
    }
  CountBytes(state);
}

BENCHMARK(Parse_Library)->Unit(benchmark::kMillisecond);
BENCHMARK(Parse_Document)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseAndWrite_Document)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseAndResolveLinks_Document)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillbook
