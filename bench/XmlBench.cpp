// Reading and writing project files: the XML layer beside what the parser below it takes alone. Each pair of figures
// is to be read side by side, from one run.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdlib>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/XMLDocument.h"

namespace quillbook {
namespace {

constexpr std::size_t topics = 10'000;

const char* const attributeNames[] = {"Key",         "Name",        "Title",         "Category",   "CreatedBy",
                                      "CreatedOn",   "ModifiedBy",  "ModifiedOn",    "Status",     "LayoutName",
                                      "Description", "AliasNumber", "IncludeInHelp", "AutoKeyword"};

std::string Body(std::size_t number) {
  std::string body;
  while (body.size() < 4000) {
    body += "<p>Help is read by people who are in the middle of something else. The page says what to do, ";
    body += "<a href=\"topic" + std::to_string(number++ % topics) + ".html\">and where to go on</a>.&nbsp;</p>\r\n";
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

XMLDocument MakeProject() {
  XMLDocument document;
  auto root = document.DocumentElement();
  root.SetName("QBProject");
  for (const auto& body : Bodies()) {
    auto topic = root.AddChild("Topic");
    for (const auto* name : attributeNames) topic.AddAttribute(name, "True");
    topic.AddChild("BodyText", body);
  }
  return document;
}

/// The folder of the benchmark's files, gone at the end of the process.
class Folder {
 public:
  Folder() {
    if (!::mkdtemp(mPath.data())) std::abort();
    FileSystemObject file(Project());
    file.Open(FileSystemObject::ModeCreate, FileSystemObject::AccessWrite, FileSystemObject::LockShared, 32767);
    file.WriteLine(MakeProject().ToString());
    file.Close();
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    ::unlink(Project().c_str());
    ::unlink(Copy().c_str());
    ::rmdir(mPath.c_str());
  }
  [[nodiscard]] std::string Project() const { return mPath + "/project.qbp"; }
  [[nodiscard]] std::string Copy() const { return mPath + "/copy.qbp"; }

 private:
  std::string mPath = "/tmp/quillbook-bench-XXXXXX";
};

const Folder& Files() {
  static const Folder folder;
  return folder;
}

void CountBytes(benchmark::State& state) {
  static const auto size = static_cast<std::int64_t>(FileSystemObject(Files().Project()).ReadAll().size());
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * size);
}

void Load_Parser(benchmark::State& state) {
  const auto path = Files().Project();
  for (auto _ : state) {
    pugi::xml_document document;
    benchmark::DoNotOptimize(document.load_file(path.c_str(), pugi::parse_default, pugi::encoding_utf8).status);
  }
  CountBytes(state);
}

void Load_Document(benchmark::State& state) {
  const FileSystemObject file(Files().Project());
  for (auto _ : state) {
    XMLDocument document;
    benchmark::DoNotOptimize(document.LoadXML(file.ReadAll()).ok);
  }
  CountBytes(state);
}

/// With every attribute and text looked at, as readers of records do.
void Load_DocumentAndRead(benchmark::State& state) {
  const FileSystemObject file(Files().Project());
  for (auto _ : state) {
    XMLDocument document;
    document.LoadXML(file.ReadAll());
    std::size_t size = 0;
    for (const auto topic : document.DocumentElement().ChildElements()) {
      const auto attributes = topic.Attributes();
      for (const auto* name : attributeNames) size += attributes.Item(name).Value().size();
      for (const auto section : topic.ChildElements()) size += section.TextView().size();
    }
    benchmark::DoNotOptimize(size);
  }
  CountBytes(state);
}

void Save_Parser(benchmark::State& state) {
  pugi::xml_document document;
  document.load_file(Files().Project().c_str(), pugi::parse_default, pugi::encoding_utf8);
  const auto path = Files().Copy();
  for (auto _ : state)
    benchmark::DoNotOptimize(document.save_file(path.c_str(), "\t", pugi::format_default, pugi::encoding_utf8));
  CountBytes(state);
}

void WriteCopy(const XMLDocument& document) {
  FileSystemObject file(Files().Copy());
  file.Open(FileSystemObject::ModeCreate, FileSystemObject::AccessWrite, FileSystemObject::LockShared, 32767);
  document.WriteTo([&](std::string_view part) { file.WriteText(part); });
  file.Close();
}

void Save_Document(benchmark::State& state) {
  const auto document = MakeProject();
  for (auto _ : state) WriteCopy(document);
  CountBytes(state);
}

/// With the tree made anew, as a save does.
void Save_MakeAndWrite(benchmark::State& state) {
  Bodies();
  for (auto _ : state) WriteCopy(MakeProject());
  CountBytes(state);
}

void Text_Document(benchmark::State& state) {
  const auto document = MakeProject();
  for (auto _ : state) benchmark::DoNotOptimize(document.ToString().size());
  CountBytes(state);
}

BENCHMARK(Load_Parser)->Unit(benchmark::kMillisecond);
BENCHMARK(Load_Document)->Unit(benchmark::kMillisecond);
BENCHMARK(Load_DocumentAndRead)->Unit(benchmark::kMillisecond);
BENCHMARK(Save_Parser)->Unit(benchmark::kMillisecond);
BENCHMARK(Save_Document)->Unit(benchmark::kMillisecond);
BENCHMARK(Save_MakeAndWrite)->Unit(benchmark::kMillisecond);
BENCHMARK(Text_Document)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillbook
