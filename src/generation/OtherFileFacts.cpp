#include "generation/OtherFileFacts.h"

#include <algorithm>

namespace quillbook {

OtherFileFacts::Facts OtherFileFacts::Find(const OtherFile& file) {
  Facts facts;
  facts.relativeName = file.RelativeFileName();
  facts.url = facts.relativeName;
  std::replace(facts.url.begin(), facts.url.end(), '\\', '/');
  facts.styleSheet = file.IsStyleSheet();
  facts.script = file.IsScript();
  facts.templateFile = (facts.styleSheet || facts.script) && file.IsTemplateFile();
  return facts;
}

const OtherFileFacts::Facts& OtherFileFacts::Of(const Ref<OtherFile>& file) {
  auto path = file->LocalSpec();
  auto& entry = mEntries[file.get()];
  if (!entry.file || entry.path != path) entry = {file, std::move(path), Find(*file)};
  return entry.facts;
}

}  // namespace quillbook
