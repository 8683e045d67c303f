// The stored record of a build profile.
#include <cstdint>
#include <limits>

#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

namespace {

constexpr std::int16_t MicrosoftHelp2 = 2;
constexpr std::string_view Help2Extension = ".hxs";

bool IsTrue(std::string_view text) {
  return text == "True";
}

std::int16_t ShortFromText(std::string_view text) {
  const auto number = LongFromText(text);
  using Limits = std::numeric_limits<std::int16_t>;
  if (number < Limits::min() || number > Limits::max()) throw Failure(FailureNumber::Overflow);
  return static_cast<std::int16_t>(number);
}

/// Puts the Help 2 extension in the place of the last four characters of a longer name.
void GiveHelp2Extension(std::string& name) {
  const auto length = Utf16Length(name);
  if (length <= Help2Extension.size() || EndsWithIgnoringCase(name, Help2Extension)) return;
  std::size_t cut = 0;
  for (auto left = length; left > Help2Extension.size();) left -= NextCodePoint(name, cut) > 0xFFFF ? 2 : 1;
  name.replace(cut, std::string::npos, Help2Extension);
}

void SaveOverrides(XMLElement& e, const VariableValues& values, std::string_view elementName) {
  for (const auto& value : values)
    if (!value->Value.empty()) e.AddChild(elementName, value->Value).AddAttribute("Name", value->Name);
}

}  // namespace

void BuildProfile::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    LoadMandatory(e);
    CompleteHelp2Settings();
    LoadOptional(e);
    LoadOverrides(e);
  });
}

void BuildProfile::LoadMandatory(const XMLElement& e) {
  const auto attributes = e.Attributes();
  mID = attributes.Item("ID").Value();
  mName = attributes.Item("Name").Value();
  mOutputDirectory = attributes.Item("OutputDirectory").Value();
  mCompileHelpFile = IsTrue(attributes.Item("CompileHelpFile").Value());
  mHTMLHelpVersion = ShortFromText(attributes.Item("HTMLHelpVersion").Value());
  mH2Namespace = attributes.Item("H2Namespace").Value();
  mH2FileID = attributes.Item("H2FileID").Value();
  mHelpFileName = attributes.Item("HelpFileName").Value();
}

void BuildProfile::CompleteHelp2Settings() {
  mHTMLHelpVersion = MicrosoftHelp2;
  if (mH2Namespace.empty()) mH2Namespace = Project()->Filename->BaseName();
  if (mH2FileID.empty()) mH2FileID = mH2Namespace;
  GiveHelp2Extension(mHelpFileName);
}

void BuildProfile::LoadOptional(const XMLElement& e) {
  const auto attributes = e.Attributes();
  const auto optional = [&](std::string_view name, auto store) {
    IgnoreFailures([&] { store(attributes.Item(name).Value()); });
  };
  optional("ProjectTitle", [&](auto text) { mProjectTitle = text; });
  optional("RemoveOutputFiles", [&](auto text) { mRemoveOutputFiles = IsTrue(text); });
  optional("IncludeInBuild", [&](auto text) { mIncludeInBuild = IsTrue(text); });
  optional("DefaultTopicID", [&](auto text) { mDefaultTopicID = text; });
  optional("LocaleID", [&](auto text) { mLocaleID = Variant(LeadingNumber(text)).ToLong(); });
  optional("H2PlugIn", [&](auto text) { mH2PlugIn = text; });
}

void BuildProfile::LoadOverrides(const XMLElement& e) {
  for (const auto& child : e.ChildElements()) {
    const auto kind = child.Name();
    if (kind != "TemplateProperty" && kind != "ProjectProperty") continue;
    const auto value =
        New<quillbook::VariableValue>(std::string(child.Attributes().Item("Name").Value()), child.Text());
    (kind == "TemplateProperty" ? mVariableValues : mProjectPropertyValues)->AddKeyed(value, value->Name);
  }
}

void BuildProfile::Save(XMLElement e) {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    e.SetName("BuildProfile");
    e.AddAttribute("ID", mID);
    e.AddAttribute("Name", mName);
    e.AddAttribute("OutputDirectory", mOutputDirectory);
    e.AddAttribute("CompileHelpFile", BooleanText(mCompileHelpFile));
    e.AddAttribute("HTMLHelpVersion", std::to_string(mHTMLHelpVersion));
    e.AddAttribute("H2Namespace", mH2Namespace);
    e.AddAttribute("H2FileID", mH2FileID);
    e.AddAttribute("H2PlugIn", mH2PlugIn);
    e.AddAttribute("HelpFileName", mHelpFileName);
    e.AddAttribute("UseBuildFlags", BooleanText(UseBuildFlags()));
    e.AddAttribute("ProjectTitle", mProjectTitle);
    e.AddAttribute("RemoveOutputFiles", BooleanText(mRemoveOutputFiles));
    e.AddAttribute("BuildFlags", "");
    e.AddAttribute("IncludeInBuild", BooleanText(mIncludeInBuild));
    e.AddAttribute("DefaultTopicID", mDefaultTopicID);
    e.AddAttribute("LocaleID", std::to_string(mLocaleID));
    SaveOverrides(e, *mVariableValues, "TemplateProperty");
    SaveOverrides(e, *mProjectPropertyValues, "ProjectProperty");
  });
}

}  // namespace quillbook
