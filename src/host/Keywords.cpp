#include "quillbook/host/Keywords.h"

#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

Ref<Keyword> FindOrAdd(Collection<Ref<Keyword>>& list, std::string_view name) {
  if (const auto* known = list.Find(name)) return *known;
  auto keyword = New<Keyword>(std::string(name));
  list.Add(keyword, name);
  return keyword;
}

void AddJump(Keyword& keyword, std::string_view target) {
  if (!target.empty() && !keyword.Jumps()->Contains(target))
    keyword.Jumps()->Add(New<KeywordJump>(std::string(target)), target);
}

}  // namespace

const TypeInfo& KeywordJump::StaticType() {
  static const TypeInfo type = Describe<KeywordJump>("KeywordJump")
                                   .Field<&KeywordJump::mTarget>("mTarget")
                                   .ReadOnly<&KeywordJump::Target>("Target")
                                   .Done();
  return type;
}

const Ref<Collection<Ref<Keyword>>>& Keyword::ChildKeywords() {
  if (!mChildKeywords) mChildKeywords = New<Collection<Ref<Keyword>>>();
  return mChildKeywords;
}

const Ref<Collection<Ref<KeywordJump>>>& Keyword::Jumps() {
  if (!mJumps) mJumps = New<Collection<Ref<KeywordJump>>>();
  return mJumps;
}

const TypeInfo& Keyword::StaticType() {
  static const TypeInfo type = Describe<Keyword>("Keyword")
                                   .Field<&Keyword::mName>("mName")
                                   .ReadOnly<&Keyword::Name>("Name")
                                   .ReadOnly<&Keyword::HasChildKeywords>("HasChildKeywords")
                                   .ReadOnly<&Keyword::ChildKeywords>("ChildKeywords")
                                   .ReadOnly<&Keyword::Jumps>("Jumps")
                                   .Done();
  return type;
}

Keywords::Keywords() : mItems(New<Collection<Ref<Keyword>>>()) {}

/// Takes the tree apart level by level: dropping a chain of a hundred thousand levels from its top would recurse.
Keywords::~Keywords() {
  std::vector<Ref<Keyword>> waiting(mItems->begin(), mItems->end());
  mItems->Clear();
  while (!waiting.empty()) {
    const auto keyword = waiting.back();
    waiting.pop_back();
    if (!keyword->HasChildKeywords()) continue;
    for (const auto& child : *keyword->ChildKeywords()) waiting.push_back(child);
    keyword->ChildKeywords()->Clear();
  }
}

void Keywords::Add(std::string_view keyword, std::string_view target) {
  if (!keyword.empty()) AddJump(*FindOrAdd(*mItems, keyword), target);
}

void Keywords::AddSubKeyword(std::string_view levels, std::string_view target) {
  Ref<Keyword> keyword;
  for (const auto level : Split(levels, ',')) {
    const auto name = TrimBlanks(level);
    if (name.empty()) continue;
    const auto list = keyword ? keyword->ChildKeywords() : mItems;
    keyword = FindOrAdd(*list, name);
  }
  if (keyword) AddJump(*keyword, target);
}

const TypeInfo& Keywords::StaticType() {
  static const TypeInfo type = Describe<Keywords>("Keywords")
                                   .Field<&Keywords::mItems>("mItems")
                                   .ReadOnly<&Keywords::Items>("Items")
                                   .ReadOnly<&Keywords::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
