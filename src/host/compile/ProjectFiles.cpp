#include "host/compile/ProjectFiles.h"

#include <algorithm>

#include "host/compile/Names.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t LongestPath = 255;

int HexDigit(char c) {
  return c >= '0' && c <= '9' ? c - '0' : FoldName(c) >= 'a' && FoldName(c) <= 'f' ? FoldName(c) - 'a' + 10 : -1;
}

/// Bytes that an address gives as "%20".
std::string Unescape(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && HexDigit(text[i + 1]) >= 0 && HexDigit(text[i + 2]) >= 0) {
      result += static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2]));
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace

std::string_view AnchorOf(std::string_view path) {
  const auto at = path.find('#');
  return at == std::string_view::npos ? std::string_view() : path.substr(at);
}

std::string_view FolderOf(std::string_view path) {
  const auto slash = path.rfind('/');
  return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash + 1);
}

bool IsOutsideAddress(std::string_view address) {
  if (address.find("::") != std::string_view::npos || address.starts_with("//")) return true;
  const auto colon = address.find(':');
  return colon != std::string_view::npos && colon < address.find_first_of("/\\#?");
}

std::optional<std::string> InnerPath(std::string_view folder, std::string_view path) {
  std::string whole(path.substr(0, path.find_first_of("#?")));
  std::replace(whole.begin(), whole.end(), '\\', '/');
  whole = whole.starts_with('/') ? whole.substr(1) : std::string(folder) + whole;
  std::vector<std::string_view> parts;
  for (const auto part : Split(whole, '/')) {
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      parts.push_back(part);
    } else {
      if (parts.empty()) return {};
      parts.pop_back();
    }
  }
  std::string result;
  for (const auto part : parts) result += (result.empty() ? "" : "/") + std::string(part);
  return result;
}

std::optional<std::string> ProjectFiles::Add(const std::string& path, const FileMention& mention, IfMissing level) {
  if (const auto stored = Find(path); stored && mPaths[*stored] == path) return path;
  if (const auto answer = mAnswers.find(path); answer != mAnswers.end())
    return answer->second ? std::optional(mPaths[*answer->second]) : std::nullopt;
  const auto found = Look(path, mention, level);
  if (!found) {
    mAnswers.emplace(path, std::nullopt);
    return {};
  }
  auto known = Find(*found);
  if (!known) {
    CheckPath(*found, mention);
    known = static_cast<std::uint32_t>(mPaths.size());
    mByName.Add(HashOfName(*found), *known);
    mPaths.push_back(*found);
    mMentions.push_back(mention);
  } else if (mPaths[*known] != *found) {
    mMessages.Warning("HC2005",
                      "'" + *found + "' differs from '" + mPaths[*known] +
                          "' by case only; a help file holds one of them, the latter",
                      mention);
  }
  if (mPaths[*known] != path) mAnswers.emplace(path, known);
  return mPaths[*known];
}

std::optional<std::string> ProjectFiles::Look(const std::string& path, const FileMention& mention, IfMissing level) {
  auto found = FindOnDisk(path);
  if (!found) {
    const auto text = "There is no file '" + path + "'";
    level == IfMissing::Error ? mMessages.Error("HC3003", text, mention) : mMessages.Warning("HC3003", text, mention);
  } else if (*found != path) {
    mMessages.Add({MessageLevel::Note, "HC3002", "'" + path + "' is '" + *found + "' on the disk", mention.file,
                   mention.place.line, mention.place.column});
  }
  return found;
}

std::optional<std::uint32_t> ProjectFiles::Find(std::string_view path) const {
  return mByName.Find(HashOfName(path), [&](std::uint32_t number) { return NameEquals(mPaths[number], path); });
}

void ProjectFiles::CheckPath(const std::string& path, const FileMention& mention) {
  if (Utf16Length(path) > LongestPath)
    mMessages.Warning("HC2006", "'" + path + "' is longer than " + std::to_string(LongestPath) + " characters",
                      mention);
}

std::optional<std::string> ProjectFiles::FindOnDisk(const std::string& path) {
  if (path.empty()) return {};
  const auto& files = Platform::Current().Files();
  for (const auto& candidate : {path, Unescape(path)}) {
    const auto status = files.GetStatus(NativePath(candidate));
    if (status.exists && !status.isDirectory) return candidate;
  }
  return FindIgnoringCase(path);
}

/// Goes down folder by folder; among names that differ by case only the first in byte order counts.
std::optional<std::string> ProjectFiles::FindIgnoringCase(const std::string& path) {
  const auto& files = Platform::Current().Files();
  std::string found;
  for (const auto part : Split(path, '/')) {
    const auto folder = NativePath(found);
    auto [listing, isNew] = mListings.try_emplace(folder);
    if (isNew) {
      try {
        for (const auto& entry : files.ListDirectory(folder.empty() ? "." : folder))
          listing->second.push_back(entry.name);
      } catch (const Failure&) {
        return {};  // what can't be listed can't be searched
      }
    }
    const auto& names = listing->second;
    auto match = std::find(names.begin(), names.end(), part);
    if (match == names.end())
      match =
          std::find_if(names.begin(), names.end(), [&](const auto& name) { return EqualsIgnoringCase(name, part); });
    if (match == names.end()) return {};
    if (!found.empty()) found += '/';
    found += *match;
  }
  const auto status = files.GetStatus(NativePath(found));
  return status.exists && !status.isDirectory ? std::optional(found) : std::nullopt;
}

}  // namespace quillbook::compile
