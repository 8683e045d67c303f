#include "cli/edit/EditArguments.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>

#include "cli/ExitCode.h"
#include "cli/OptionHelp.h"
#include "cli/Terminal.h"
#include "cli/edit/Actions.h"

namespace quillbook::cli {
namespace {

constexpr const char* kValueHelp =
    "A VALUE of @FILE is read from a file, of @- from standard input; @@ at the\n"
    "beginning stands for one @.";

constexpr const char* kPlaces = " --before OTHER|--after OTHER|--first|--last";

constexpr const char* kEditExitCodes =
    "Exit codes:\n"
    "  0  done\n"
    "  2  wrong usage, or a project that can't be read; nothing was written\n"
    "  3  the project wasn't saved, and is as it was";

/// One line a field: name, what it is, what may be given.
std::string FieldHelp(const RecordKind& kind) {
  std::string text = "Fields:\n";
  for (const auto& field : kind.Fields()) text += fmt::format("  {:<17} {}\n", field.name, field.help);
  return text;
}

/// What a command line of an action looks like, without the options.
std::string Form(const KindInfo& info, Action action) {
  std::string form = "PROJECT";
  if (info.ofTopic) form += action == Action::List ? " [TOPIC]" : " TOPIC";
  const bool named = action != Action::List && !info.single && (action != Action::Add || info.named);
  if (named) form += " NAME";
  if (action == Action::Show) form += " [FIELD]";
  if (action == Action::Set) form += " FIELD=VALUE...";
  if (action == Action::Add) form += " [FIELD=VALUE...]";
  return form;
}

std::string Summary(const KindInfo& info, Action action) {
  const std::string summary(InfoOf(action).summary);
  if (action == Action::List) return summary + " " + std::string(info.name);
  return summary + " " + (info.single ? "the " + std::string(info.singular) : WithArticle(info.singular));
}

/// The arguments of one action, as CLI11 reads them.
class ActionApp {
 public:
  ActionApp(const RecordKind& kind, Action action)
      : mInfo(kind.Info()), mApp(Summary(mInfo, action), fmt::format("quillbook {} {}", mInfo.name, Name(action))) {
    mOptions.kind = &kind;
    mOptions.action = action;
    SetUpHelpPage(mApp);
    AddArguments(action);
    AddOptions(action);
    std::string footer = action == Action::Add || action == Action::Set ? std::string(kValueHelp) + "\n\n" : "";
    if (action != Action::Remove && action != Action::Move) footer += FieldHelp(kind);
    if (Changes(action)) footer.append(footer.empty() ? "" : "\n").append(kEditExitCodes);
    while (!footer.empty() && footer.back() == '\n') footer.pop_back();
    mApp.footer(footer);
  }

  std::variant<EditOptions, int> Parse(int count, const char* const* arguments) {
    try {
      mApp.parse(count, arguments);
    } catch (const CLI::Success& help) {
      return mApp.exit(help);
    } catch (const CLI::ParseError& error) {
      return WrongUsage(error.what(), mApp.get_name());
    }
    if (const auto left = mApp.remaining(); !left.empty())
      return WrongUsage(fmt::format("{} {} takes no '{}'", mInfo.name, Name(mOptions.action), left.front()),
                        mApp.get_name());
    if (mOptions.action == Action::Move && PlacesGiven() == 0)
      return WrongUsage("say where to move it", mApp.get_name());
    if (PlacesGiven() > 1) return WrongUsage("name one place only", mApp.get_name());
    return mOptions;
  }

 private:
  static std::string_view Name(Action action) { return InfoOf(action).name; }

  CLI::Option* Argument(const std::string& name, std::string& value, const std::string& help) {
    return mApp.add_option(name, value, help)->required()->type_name("");
  }

  void AddArguments(Action action) {
    Argument("PROJECT", mOptions.project, "The project file, *.qbp");
    if (mInfo.ofTopic) Argument("TOPIC", mOptions.topic, "Name or key of a topic")->required(action != Action::List);
    if (action != Action::List && !mInfo.single && (action != Action::Add || mInfo.named))
      Argument("NAME", mOptions.name, action == Action::Add ? "Its name" : Capital(mInfo.address));
    if (action == Action::Show) Argument("FIELD", mOptions.field, "Show this field alone, as it is")->required(false);
    if (action == Action::Add || action == Action::Set)
      mApp.add_option("FIELD=VALUE", mOptions.assignments, "What the fields shall hold")
          ->required(action == Action::Set)
          ->type_name("")
          ->expected(0, CLI::detail::expected_max_vector_size);
  }

  void AddOptions(Action action) {
    if (action == Action::Add || action == Action::Move) AddPlaces();
    if (Changes(action)) AddSaveOptions(mApp, mOptions);
    if (action == Action::Remove) mApp.add_flag("--yes", mOptions.yes, "Answer every question with yes");
    mApp.add_flag("--quiet", mOptions.quiet, "Print errors only");
    mApp.add_flag("--json", mOptions.json, "Print one JSON object on standard output");
  }

  void AddPlaces() {
    mApp.add_option("--before", mOptions.before, "Place it before this one")->type_name("OTHER");
    mApp.add_option("--after", mOptions.after, "Place it after this one")->type_name("OTHER");
    mApp.add_flag("--first", mOptions.first, "Place it at the beginning");
    mApp.add_flag("--last", mOptions.last, "Place it at the end");
    if (mInfo.tree)
      mApp.add_option("--into", mOptions.into, "Place it below this one; with --first, before\nwhat is there already")
          ->type_name("NODE");
  }

  [[nodiscard]] int PlacesGiven() const {
    const int ends = (mOptions.first ? 1 : 0) + (mOptions.last ? 1 : 0);
    const int beside = (mOptions.before.empty() ? 0 : 1) + (mOptions.after.empty() ? 0 : 1);
    return beside + (mOptions.into.empty() ? ends : beside == 0 && ends < 2 ? 1 : 2);
  }

  static std::string Capital(std::string_view text) {
    std::string capital(text);
    if (!capital.empty() && capital.front() >= 'a' && capital.front() <= 'z') capital.front() -= 'a' - 'A';
    return capital;
  }

  const KindInfo& mInfo;
  EditOptions mOptions;
  CLI::App mApp;
};

/// The page of a kind, with all its actions.
std::string KindHelp(const RecordKind& kind) {
  const auto& info = kind.Info();
  std::string text = fmt::format("{}\nUsage: quillbook {} ACTION PROJECT ...\n\nActions:\n", info.summary, info.name);
  for (const auto action : info.actions)
    text +=
        fmt::format("  {:<7} {}{}\n", InfoOf(action).name, Form(info, action), action == Action::Move ? kPlaces : "");
  if (info.tree) text += "Both add and move take --into NODE too.\n";
  if (!info.single && !info.address.empty()) text += fmt::format("\nNAME is the {}.\n", info.address);
  return text + "\n" + FieldHelp(kind) +
         fmt::format("\nquillbook {} ACTION --help tells the options of an action.\n", info.name);
}

}  // namespace

std::variant<EditOptions, int> ParseEditArguments(const RecordKind& kind, int count, const char* const* arguments) {
  const auto& info = kind.Info();
  const std::string word = count > 1 ? arguments[1] : "";
  if (word == "-h" || word == "--help") return PrintOutput(KindHelp(kind)) ? Done : NotBuilt;
  const std::string program = fmt::format("quillbook {}", info.name);
  if (word.empty()) return WrongUsage(fmt::format("say what to do with the {}", info.name), program);
  const auto action = FindAction(kind, word);
  if (!action) return WrongUsage(fmt::format("{} has no action '{}'", info.name, word), program);
  return ActionApp(kind, *action).Parse(count - 1, arguments + 1);
}

}  // namespace quillbook::cli
