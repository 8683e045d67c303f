#include "cli/Losses.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <unordered_set>

#include "cli/TagScanner.h"
#include "quillbook/base/Date.h"
#include "quillbook/base/Text.h"

namespace quillbook::cli {
namespace {

/// What reading knows of an element. Names are in lower case, lists have a blank around each name.
struct Shape {
  std::string_view name;
  std::string_view attributes;
  std::string_view key = {};       ///< attribute that only one element may have with a value
  std::string_view children = {};  ///< elements that are read, each under the shape of its name
  std::string_view any = {};       ///< the shape of every other child; none if there may be no other
};

constexpr std::string_view kPassedOver = "bf";

constexpr std::array<Shape, 24> kShapes = {{
    {"", "", "", " qbproject topicset "},
    {"qbproject",
     " projecttype version savedatetime mvpfilename templatename spelllastcheckdatetime title sccactivated sccproject "
     "helpcontextidheaderfile outputdirectory autogenerateindexentries autogeneratecategoryindex buildmvproject "
     "defaulttopic lite outputfilename help2namespace help2fileid ",
     "",
     " spellignoreallwordlist cat variablevalue file topic glossaryitems glossaryitem nodes tasks buildprofiles "
     "projectproperties "},
    {"spellignoreallwordlist", ""},
    {"cat", " name key autoindex ", "key"},
    {"variablevalue", " name ", "name"},
    {"file", " filename captureinfo includeinoutput ", "filename"},
    {"topic",
     " key name title contentstitle status createdon modifiedon layoutname allstylesheets allscripts "
     "autogenerateindexentry includeinhelpfile helpcontextids category ",
     "key", " notes k r s c st sc "},
    {"notes", ""},
    {"k", " value "},
    {"r", " t cat title rt url "},
    {"s", " k "},
    {"c", ""},
    {"st", "", "", "", "f"},
    {"sc", "", "", "", "f"},
    {"f", ""},
    {"glossaryitems", "", "", "", "glossaryitem"},
    {"glossaryitem", " key term ", "key"},
    {"nodes", "", "", "", "n"},
    {"n", " key nt ct c i cfn tid url ", "key", "", "n"},
    {"tasks", "", "", "", "task"},
    {"task", " key priority title assignedto topicid status createdon createdby modifiedon modifiedby ", "key"},
    {"buildprofiles", "", "", "", "buildprofile"},
    {"buildprofile",
     " id name outputdirectory compilehelpfile htmlhelpversion h2namespace h2fileid h2plugin helpfilename "
     "usebuildflags projecttitle removeoutputfiles buildflags includeinbuild defaulttopicid localeid ",
     "id", " templateproperty "},
    {"templateproperty", " name "},
}};
// A project property has two forms, told apart by where it stands.
constexpr Shape kProperties{"projectproperties", "", "", " projectproperty "};
constexpr Shape kProperty{"projectproperty", " propertyname propertytype propertyvalue id ", "id"};
constexpr Shape kOverride{"projectproperty", " name "};

bool Has(std::string_view list, std::string_view name) {
  return !name.empty() && list.find(" " + std::string(name) + " ") != std::string_view::npos;
}

const Shape* Named(std::string_view name) {
  if (name == "topicset") name = "qbproject";
  const auto* const found =
      std::find_if(kShapes.begin(), kShapes.end(), [name](const Shape& shape) { return shape.name == name; });
  return found == kShapes.end() ? nullptr : found;
}

/// The shape of an element below another; null if it isn't read there.
const Shape* ShapeBelow(const Shape& parent, std::string_view name) {
  if (name == "projectproperty" && parent.name == "buildprofile") return &kOverride;
  if (name == "projectproperty" && parent.name == "projectproperties") return &kProperty;
  if (name == "projectproperties" && parent.name == "qbproject") return &kProperties;
  if (Has(parent.children, name)) return Named(name);
  return parent.any.empty() ? nullptr : Named(parent.any);
}

bool IsNumberAt(std::string_view text, std::size_t at, std::size_t count) {
  return text.size() >= at + count && std::all_of(text.begin() + static_cast<std::ptrdiff_t>(at),
                                                  text.begin() + static_cast<std::ptrdiff_t>(at + count),
                                                  [](char c) { return c >= '0' && c <= '9'; });
}

/// "dd-mm-yyyy", with anything between and behind the numbers.
bool IsTopicDate(std::string_view text) {
  return IsNumberAt(text, 0, 2) && IsNumberAt(text, 3, 2) && IsNumberAt(text, 6, 4);
}

class Finder {
 public:
  explicit Finder(std::string_view text) : mTags(text) {}

  std::vector<Problem> Run() {
    while (mTags.Next()) {
      switch (mTags.What()) {
        case TagScanner::Kind::Comment: Comment(); break;
        case TagScanner::Kind::End: mOpen.pop_back(); break;
        default: Start();
      }
    }
    CheckCategories();
    std::stable_sort(mProblems.begin(), mProblems.end(),
                     [](const Problem& left, const Problem& right) { return left.line < right.line; });
    return std::move(mProblems);
  }

 private:
  struct Reference {
    std::string category;
    std::string topic;
    std::size_t line;
  };

  void Add(std::string_view code, std::string message) {
    mProblems.push_back({std::string(code), std::move(message), mTags.Line()});
  }

  void Comment() {
    if (!mOpen.empty() && mOpen.back()) Add("comment.not-kept", "There is a comment, which saving doesn't keep");
  }

  void Start() {
    const auto* const parent = mOpen.empty() ? &kShapes.front() : mOpen.back();
    const auto name = LowerCase(mTags.Name());
    const bool passedOver = !parent || (parent->name == "n" && mTags.Name() == kPassedOver);
    const auto* const shape = passedOver ? nullptr : ShapeBelow(*parent, name);
    if (shape)
      CheckElement(*shape);
    else if (!passedOver)
      Add("element.unknown", fmt::format("Nothing reads an element '{}' here", mTags.Name()));
    if (mTags.What() == TagScanner::Kind::Start) mOpen.push_back(shape);
  }

  void CheckElement(const Shape& shape) {
    mTags.ForEachAttribute([&](std::string_view name, std::string_view) {
      if (!Has(shape.attributes, LowerCase(name)))
        Add("attribute.unknown", fmt::format("Nothing reads an attribute '{}' of element '{}'", name, mTags.Name()));
      return true;
    });
    CheckKey(shape);
    if (shape.name == "cat") mCategories.insert(FoldCase(mTags.Attribute("Key")));
    if (shape.name == "topic") CheckTopic();
  }

  void CheckKey(const Shape& shape) {
    if (shape.key.empty()) return;
    const auto key = mTags.Attribute(shape.key);
    if (!key.empty() && !mKeys.insert(std::string(shape.name) + " " + FoldCase(key)).second)
      Add("key.repeated", fmt::format("The key {} of element '{}' is there already", key, shape.name));
  }

  void CheckTopic() {
    const auto name = std::string(mTags.Attribute("Name"));
    const auto category = mTags.Attribute("Category");
    if (!category.empty()) mReferences.push_back({FoldCase(category), name, mTags.Line()});
    for (const auto* date : {"CreatedOn", "ModifiedOn"})
      if (const auto text = mTags.Attribute(date); !text.empty() && !IsTopicDate(text))
        Add("topic.no-date", fmt::format("{} of topic '{}' is no date: {}", date, name, text));
  }

  void CheckCategories() {
    for (const auto& reference : mReferences)
      if (!mCategories.contains(reference.category))
        mProblems.push_back({"topic.no-category",
                             fmt::format("Topic '{}' names a category that is not there", reference.topic),
                             reference.line});
  }

  TagScanner mTags;
  std::vector<const Shape*> mOpen;  ///< the elements around the present one; null for one that isn't read
  std::unordered_set<std::string> mKeys;
  std::unordered_set<std::string> mCategories;
  std::vector<Reference> mReferences;
  std::vector<Problem> mProblems;
};

}  // namespace

std::vector<Problem> FindLosses(std::string_view text) {
  return Finder(text).Run();
}

}  // namespace quillbook::cli
