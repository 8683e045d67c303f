#include "frame/services/MimeTypes.h"

#include <fnmatch.h>

#include <algorithm>
#include <charconv>
#include <tuple>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::detail {
namespace {

constexpr std::string_view wildcards = "*?[";

std::string ReadIfThere(const std::string& path) {
  const auto& files = Platform::Current().Files();
  try {
    if (files.GetStatus(path).exists) return files.ReadFile(path);
  } catch (const Failure&) {  // a database that can't be read is as good as missing
  }
  return {};
}

/// How much a language counts: its place in the list. English texts bear no language.
std::size_t RankOf(std::string_view language, const std::vector<std::string>& languages) {
  const auto wanted = language.empty() ? std::string_view("en") : language;
  const auto found = std::find(languages.begin(), languages.end(), wanted);
  const auto rank = static_cast<std::size_t>(found - languages.begin());
  return found == languages.end() && !language.empty() ? rank + 1 : rank;
}

std::string NameAttribute(const XMLElement& element) {
  return std::string(element.Attributes().Find("name").value_or(std::string_view()));
}

/// What the file of one type says of it.
struct TypeFile {
  TypeFile(const XMLElement& root, const std::vector<std::string>& languages) {
    auto best = languages.size() + 1;  // worse than English
    for (const auto& child : root.ChildElements()) {
      if (child.Name() == "icon") icon = NameAttribute(child);
      if (child.Name() == "generic-icon") genericIcon = NameAttribute(child);
      if (child.Name() != "comment") continue;
      const auto language = child.Attributes().Find("xml:lang").value_or(std::string_view());
      if (const auto rank = RankOf(language, languages); rank < best) {
        best = rank;
        comment = child.Text();
      }
    }
  }
  std::string comment, icon, genericIcon;
};

}  // namespace

MimeTypes::MimeTypes(std::vector<std::string> dataFolders) : mFolders(std::move(dataFolders)) {
  std::vector<Pattern> patterns;
  int rank = 0;
  for (auto folder = mFolders.rbegin(); folder != mFolders.rend(); ++folder) Read(*folder, rank++, patterns);
  // A folder can take back what those that count less say of a type.
  constexpr std::string_view takeBack = "__NOGLOBS__";
  std::unordered_map<std::string, int> leastFolder;
  for (const auto& pattern : patterns)
    if (pattern.text == takeBack) leastFolder[pattern.type] = pattern.folder;
  for (auto& pattern : patterns) {
    const auto least = leastFolder.find(pattern.type);
    if (pattern.text != takeBack && (least == leastFolder.end() || pattern.folder >= least->second))
      Add(std::move(pattern));
  }
}

void MimeTypes::Read(const std::string& folder, int rank, std::vector<Pattern>& patterns) {
  const auto text = ReadIfThere(folder + "/mime/globs2");
  for (const auto line : Split(text, '\n')) {
    const auto fields = Split(line, ':');  // weight, type, pattern, marks; later versions may add more
    if (line.starts_with('#') || fields.size() < 3 || fields[2].empty()) continue;
    Pattern pattern{std::string(fields[1]), std::string(fields[2]), 0, false, rank};
    std::from_chars(fields[0].data(), fields[0].data() + fields[0].size(), pattern.weight);
    for (const auto mark : Split(fields.size() > 3 ? fields[3] : std::string_view(), ','))
      if (mark == "cs") pattern.regardsCase = true;
    patterns.push_back(std::move(pattern));
  }
}

void MimeTypes::Add(Pattern pattern) {
  const std::string_view text = pattern.text;
  if (text.find_first_of(wildcards) == std::string_view::npos)
    mNames[FoldCase(text)].push_back(std::move(pattern));
  else if (text.front() == '*' && text.find_first_of(wildcards, 1) == std::string_view::npos)
    mEndings[FoldCase(text.substr(1))].push_back(std::move(pattern));
  else
    mWildcards.push_back(std::move(pattern));
}

std::string MimeTypes::TypeOf(std::string_view name) const {
  const auto importance = [](const Pattern& pattern) {
    return std::make_tuple(pattern.weight, pattern.text.size(), pattern.regardsCase, pattern.folder);
  };
  const std::string exact(name);
  const Pattern* best = nullptr;
  const auto consider = [&](const Pattern& pattern) {
    const int flags = pattern.regardsCase ? 0 : FNM_CASEFOLD;
    if (best && importance(pattern) <= importance(*best)) return;
    if (::fnmatch(pattern.text.c_str(), exact.c_str(), flags) == 0) best = &pattern;
  };
  const auto considerAll = [&](const Patterns& patterns, const std::string& key) {
    const auto found = patterns.find(key);
    if (found != patterns.end()) std::for_each(found->second.begin(), found->second.end(), consider);
  };
  const auto folded = FoldCase(name);
  considerAll(mNames, folded);
  for (std::size_t start = 0; start < folded.size(); ++start) considerAll(mEndings, folded.substr(start));
  std::for_each(mWildcards.begin(), mWildcards.end(), consider);
  return best ? best->type : std::string();
}

MimeTypes::Description MimeTypes::Describe(const std::string& type, const std::vector<std::string>& languages) const {
  Description description;
  auto icon = ReplaceAll(type, "/", "-");
  auto genericIcon = type.substr(0, type.find('/')) + "-x-generic";
  const bool isPath = type.find("..") != std::string::npos;  // the type becomes part of a file's name
  for (const auto& folder : mFolders) {
    auto text = isPath ? std::string() : ReadIfThere(folder + "/mime/" + type + ".xml");
    XMLDocument document;
    if (text.empty() || !document.LoadXML(std::move(text))) continue;
    const TypeFile file(document.DocumentElement(), languages);
    description.comment = file.comment;
    if (!file.icon.empty()) icon = file.icon;
    if (!file.genericIcon.empty()) genericIcon = file.genericIcon;
    break;
  }
  description.icons = {std::move(icon), std::move(genericIcon)};
  return description;
}

}  // namespace quillbook::detail
