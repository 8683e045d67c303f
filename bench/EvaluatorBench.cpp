// What a page costs: its evaluation, and a whole build beside the bare writing of the same bytes.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "host/CompiledTemplate.h"
#include "host/CompiledTemplateCache.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/MVProjectBuild.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/host/TemplateStore.h"
#include "support/TemporaryFolder.h"
#include "unit/host/Toy.h"

namespace {

using namespace quillbook;

/// About 5 KB with twenty elements.
std::string PageText() {
  std::string text;
  for (int i = 0; i < 20; ++i) text += std::string(240, 'x') + "%%itemtypename%%\n";
  return text;
}

void EvaluateCompiledPage(benchmark::State& state) {
  const auto compiled = CompiledTemplate::Compile(PageText());
  const auto provider = New<CommonProvider>();
  provider->SetDataProvider_CurrentItemType("Topic");
  Ref<FileSystemObject> noFile;
  std::string page;
  for (auto _ : state) {
    page.clear();
    compiled->Evaluate(*provider, noFile, page);
    benchmark::DoNotOptimize(page.data());
  }
}
BENCHMARK(EvaluateCompiledPage);

void ParseKnownText(benchmark::State& state) {
  const auto text = PageText();
  const auto provider = New<CommonProvider>();
  for (auto _ : state) benchmark::DoNotOptimize(ParserServices::ParseText(text, *provider));
}
BENCHMARK(ParseKnownText);

void CompilePage(benchmark::State& state) {
  const auto text = PageText();
  for (auto _ : state) benchmark::DoNotOptimize(CompiledTemplate::Compile(text));
}
BENCHMARK(CompilePage);

void ParseTextWithoutElements(benchmark::State& state) {
  const std::string text(5000, 'x');
  const auto provider = New<CommonProvider>();
  for (auto _ : state) benchmark::DoNotOptimize(ParserServices::ParseText(text, *provider));
}
BENCHMARK(ParseTextWithoutElements);

/// A project of `count` pages of about 5 KB, ready to be built into `out`.
class Site {
 public:
  explicit Site(int count) {
    mConfig.Write("Templates/T/template.xml", R"(<template name="T">
      <layout name="Page.html" item="toy:page" output="{QualifiedName}.html"/><definition kind="toy:page"/></template>)");
    mConfig.Write("Templates/T/layouts/Page.html", "<title>%%title%%</title>\n%%summary%%\n");
    TemplateStore::OfApartment()->SetConfigPath(mConfig.Stored());
    const auto root = New<toy::Item>("Root");
    for (int i = 0; i < count; ++i) {
      const auto page = New<toy::Item>("Page" + std::to_string(i));
      page->Summary = std::string(5000, 'x');
      root->Children->Add(page);
    }
    mProject->RootItems()->Add(root, "toy");
    const auto& docType = mProject->DocTypes()->Item("toy");
    docType->SetTemplate(TemplateStore::OfApartment()->Find("T"));
    mProject->SetCurrentDocType(docType);
  }
  ~Site() { TemplateStore::OfApartment()->SetConfigPath(""); }

  void Build(const support::TemporaryFolder& out) {
    mProject->OutputDirectory = out.Stored();
    const auto build = New<MVProjectBuild>();
    if (build->Build(mProject) != BuildStatus::Done) std::abort();
  }

 private:
  toy::Registration mRegistration;
  support::TemporaryFolder mConfig;
  Ref<MVProject> mProject = New<MVProject>();
};

void BuildIntoEmptyFolder(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    auto out = std::make_unique<support::TemporaryFolder>();
    state.ResumeTiming();
    site.Build(*out);
    state.PauseTiming();
    out.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BuildIntoEmptyFolder)->Arg(1000)->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);

void BuildAgain(benchmark::State& state) {
  Site site(static_cast<int>(state.range(0)));
  const support::TemporaryFolder out;
  site.Build(out);
  for (auto _ : state) site.Build(out);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BuildAgain)->Arg(1000)->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);

void WriteTheSameBytes(benchmark::State& state) {
  const std::string page = "<title>Page0000</title>\n" + std::string(5000, 'x') + "\n";
  for (auto _ : state) {
    state.PauseTiming();
    auto out = std::make_unique<support::TemporaryFolder>();
    state.ResumeTiming();
    for (int i = 0; i < state.range(0); ++i) {
      const auto path = *out / ("Page" + std::to_string(i) + ".html");
      const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
      if (::write(file, page.data(), page.size()) != static_cast<ssize_t>(page.size())) std::abort();
      ::close(file);
    }
    state.PauseTiming();
    out.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(WriteTheSameBytes)->Arg(1000)->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
