#include "Toy.h"

#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/Condition.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook::toy {

const TypeInfo& Item::StaticType() {
  static const TypeInfo type = Describe<Item>("ToyItem")
                                   .Public<&Item::Title>("Title")
                                   .Public<&Item::QualifiedName>("QualifiedName")
                                   .Public<&Item::Summary>("Summary")
                                   .Public<&Item::Draft>("Draft")
                                   .Public<&Item::Children>("Children")
                                   .Done();
  return type;
}

const TypeInfo& Data::StaticType() {
  static const TypeInfo type = Describe<Data>("ToyData").Done();
  return type;
}

const TypeInfo& Provider::StaticType() {
  static const TypeInfo type = Describe<Provider>("ToyProvider").Done();
  return type;
}

const TypeInfo& PlugIn::StaticType() {
  static const TypeInfo type = Describe<PlugIn>("ToyPlugIn").Done();
  return type;
}

std::string Data::DataProvider_ProvideData(const Ref<TemplateElement>& Element, Ref<FileSystemObject>& File) {
  Asked.push_back(Element->ElementType());
  if (BeforeAnswer) BeforeAnswer(*Element);
  if (Element->HasAttribute("condition")) {
    const auto condition = New<Condition>();
    condition->SetConditionType(Element->Attribute("condition"));
    if (!condition->IsValid()) return "!INVALID CONDITION TYPE!";
    if (!condition->Evaluate(mItem, mDefinition, mHost.Target())) return "";
  }
  auto result = Answer(Element, File);
  if (result == CommonProvider::Discard) result.clear();
  const auto notBlank = ParserServices::ElementNotBlankText(*Element);
  const auto blank = ParserServices::ElementBlankText(*Element);
  if (!notBlank.empty() && !result.empty())
    result = ReplaceAllIgnoringCase(notBlank, "%%" + Element->ElementType() + "%%", result);
  else if (result.empty())
    result = blank;
  return DataProvider_ParseForProperties(result);
}

std::string Data::Answer(const Ref<TemplateElement>& element, Ref<FileSystemObject>& file) {
  const auto& type = element->ElementType();
  if (EqualsIgnoringCase(type, "scrap")) return ScrapText(element->Attribute("name"));
  if (EqualsIgnoringCase(type, "children")) return ListChildren(element->Attribute("scrap"));
  if (EqualsIgnoringCase(type, "source")) return element->Source();
  if (EqualsIgnoringCase(type, "again")) return "%%again%%";
  if (EqualsIgnoringCase(type, "attributes")) {
    std::string all;
    for (std::size_t i = 1; i <= element->Attributes().Count(); ++i)
      all += element->Attributes().KeyAt(i) + "=" + element->Attributes().Item(i) + ";";
    return all;
  }
  if (const auto value = Values.find(LowerCase(type)); value != Values.end()) return value->second;
  if (mItem && mItem->HasMember(type)) return mItem->Member(type).ToText();
  const auto common = Common()->DataProvider_ProvideData(element, file);
  return common.empty() ? DataProvider_GetProperty(type) : common;
}

std::string Data::ScrapText(std::string_view name) const {
  if (const auto value = Values.find("scrap." + LowerCase(name)); value != Values.end()) return value->second;
  const auto host = mHost.Target();
  return host ? host->Scrap(name) : "";
}

std::string Data::ListChildren(std::string_view scrap) {
  std::string list;
  const auto* item = dynamic_cast<Item*>(mItem.get());
  if (!item) return list;
  const auto text = ScrapText(scrap);
  for (const auto& child : *item->Children) {
    const auto own = DataProvider_Clone();
    own->DataProvider_SetCurrentItem(mDefinition, child, "ToyItem", mItem);
    list += own->DataProvider_ParseForProperties(text);
  }
  return list;
}

Ref<CommonProvider> Data::Common() {
  auto common = New<CommonProvider>();
  common->SetMVProject(mHost.Target());
  common->DataProvider_SetCurrentItem(mDefinition, mItem, mItemType, mParent);
  return common;
}

void Data::DataProvider_Initialise(const Ref<Object>& Host) {
  mHost.SetTarget(Ref<MVProject>(dynamic_cast<MVProject*>(Host.get())));
}

void Data::DataProvider_SetCurrentItem(const Ref<NamespaceDef>& definition, const Ref<Object>& item,
                                       std::string_view type, const Ref<Object>& parent) {
  mDefinition = definition;
  mItem = item;
  mItemType = type;
  mParent = parent;
}

std::string Data::DataProvider_ParseForProperties(std::string_view Text) {
  std::string text(Text);
  for (int round = 0; round < 4 && text.find("%%") != std::string::npos; ++round)
    text = ParserServices::ParseText(text, *this);
  return text;
}

std::string Data::DataProvider_GetProperty(std::string_view Name) {
  return Common()->DataProvider_GetProperty(Name);
}

Ref<DataProvider> Data::DataProvider_Clone() {
  auto clone = New<Data>();
  clone->Values = Values;
  clone->mHost = mHost;
  clone->mRoot = mRoot;
  clone->DataProvider_SetCurrentItem(mDefinition, mItem, mItemType, mParent);
  return clone;
}

Ref<Object> Provider::INamespaceProvider_GetItems(const Ref<NamespaceDef>& definition, const Ref<Object>& parent,
                                                  std::string_view filter) {
  Filters.emplace_back(filter);
  const auto* root = mHost.Target()->RootItems()->Find("toy");
  if (definition->Kind() == "toy:project") {
    auto items = New<Collection<Ref<Object>>>();
    if (root) items->Add(*root);
    return items;
  }
  const auto* item = dynamic_cast<Item*>(parent ? parent.get() : root->get());
  if (definition->Kind() == "toy:page" && item) return item->Children;
  return New<Collection<Ref<Object>>>();
}

void Provider::INamespaceProvider_ContentCreated(const Ref<NamespaceDef>& definition, const Ref<Object>& item,
                                                 std::string_view file, bool core) {
  const auto name = file.substr(file.find_last_of('\\') + 1);
  Calls.push_back("created " + std::string(name) + (core ? " as page of " : " as ") +
                  (definition ? definition->Kind() : std::string(item->TypeName())));
}

void Provider::Note(std::string_view hook, const Ref<Object>& item) {
  Calls.push_back(std::string(hook) + " " + item->Member("Title").ToText());
}

Registration::Registration(std::vector<std::string>* calls) {
  PlugInRegistry::Register({"toy",
                            [calls]() -> Ref<IMVProjectPlugIn> {
                              auto plugIn = New<PlugIn>();
                              plugIn->Calls = calls;
                              return plugIn;
                            },
                            []() -> Ref<INamespaceProvider> { return New<Provider>(); }});
}

}  // namespace quillbook::toy
