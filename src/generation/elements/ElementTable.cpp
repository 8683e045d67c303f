// Which function gives which element its text.
#include <algorithm>
#include <array>

#include "generation/elements/Elements.h"

namespace quillbook {
namespace {

struct Entry {
  std::string_view type;
  ElementFunction function;
};

/// In order of the types, which are found by bisection.
constexpr auto Table = std::to_array<Entry>({
    {"checkforfile", elements::CheckForFile},
    {"createdon", elements::CreatedOn},
    {"designtime", elements::DesignTime},
    {"filename", elements::FileName},
    {"filtereditemlist", elements::FilteredItemList},
    {"glossaryitemdefinition", elements::GlossaryItemDefinition},
    {"glossaryitemterm", elements::GlossaryItemTerm},
    {"htmlbase", elements::HtmlBase},
    {"include", elements::Include},
    {"incrementingvalue", elements::IncrementingValue},
    {"linkcaption", elements::LinkCaption},
    {"linkurl", elements::LinkUrl},
    {"literal", elements::Literal},
    {"modifiedon", elements::ModifiedOn},
    {"projectproperty", elements::ProjectProperty},
    {"scrap", elements::Scrap},
    {"scripts", elements::Scripts},
    {"stylesheets", elements::StyleSheets},
    {"tableofcontents", elements::TableOfContents},
    {"taggedcomment", elements::TaggedComment},
    {"topicsection", elements::TopicSection},
    {"variable", elements::Variable},
});
static_assert(std::ranges::is_sorted(Table, {}, &Entry::type));

}  // namespace

ElementFunction FindElement(std::string_view type) noexcept {
  const auto* found = std::ranges::lower_bound(Table, type, {}, &Entry::type);
  return found != Table.end() && found->type == type ? found->function : nullptr;
}

}  // namespace quillbook
