#include "EvaluatorCase.h"

#include <stdexcept>

#include "Toy.h"
#include "quillbook/base/Text.h"
#include "quillbook/host/ParserServices.h"

namespace quillbook::toy {

namespace {

std::string Unescape(std::string_view value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\' || i + 1 == value.size()) {
      text += value[i];
      continue;
    }
    ++i;
    text += value[i] == 'n' ? '\n' : value[i];
  }
  return text;
}

/// What the data of a case sets up.
class Scene {
 public:
  Scene() { mItem->Title = "Item"; }

  void Take(std::string_view line) {
    const auto equals = line.find('=');
    if (line.empty() || line.front() == '#') return;
    if (equals == std::string_view::npos) throw std::runtime_error("no name=value: " + std::string(line));
    Set(std::string(line.substr(0, equals)), Unescape(line.substr(equals + 1)));
  }

  std::string Evaluate(std::string_view text) {
    mData->DataProvider_Initialise(mHost);
    mData->DataProvider_SetCurrentItem(New<NamespaceDef>(mKind), mItem, mType, nullptr);
    return ParserServices::ParseText(text, *mData);
  }

 private:
  void Set(const std::string& name, std::string value) {
    if (mItem->HasMember(name))
      mItem->SetMember(name, value);
    else if (name == "child")
      mItem->Children->Add(New<Item>(std::move(value)));
    else if (name == "kind")
      mKind = value;
    else if (name == "type")
      mType = value;
    else if (name.starts_with("variable."))
      mHost->Variables()->Add(New<VariableValue>(name.substr(9), value), name.substr(9));
    else if (name.starts_with("host."))
      SetHost(name.substr(5), value);
    else
      mData->Values[LowerCase(name)] = std::move(value);
  }

  void SetHost(const std::string& name, const std::string& value) {
    if (name == "help")
      mHost->HelpVersion = value;
    else if (name == "compile")
      mHost->CompileHelpFile = value == "True";
    else if (name == "page")
      mHost->SetCurrentPage(value);
    else if (name == "defaultpage")
      mHost->DefaultPage = value;
    else if (name == "codepage")
      mHost->CodePage = std::stoi(value);
    else if (name == "helpfile")
      mHost->HelpFileName = value;
    else if (name == "helpprojectfile")
      mHost->HelpProjectFile = value;
    else
      throw std::runtime_error("unknown name host." + name);
  }

  Ref<MVProject> mHost = New<MVProject>();
  Ref<Data> mData = New<Data>();
  Ref<Item> mItem = New<Item>();
  std::string mKind = "toy:page";
  std::string mType = "ToyItem";
};

}  // namespace

std::string EvaluateCase(std::string_view text, std::string_view data) {
  Scene scene;
  for (auto line : Split(data, '\n')) scene.Take(line);
  return scene.Evaluate(text);
}

}  // namespace quillbook::toy
