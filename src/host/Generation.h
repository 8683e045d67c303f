// One run of the engine over the items of a namespace.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/OutputSession.h"
#include "quillbook/host/DataProvider.h"
#include "quillbook/host/MVProject.h"

namespace quillbook::detail {

/// Walks the tree of the template's definitions and writes the pages. Failures are raised.
class Generation {
 public:
  /// Failure 91 for a project without current doc type, template or provider.
  explicit Generation(MVProject& project);
  ~Generation();
  Generation(const Generation&) = delete;
  Generation& operator=(const Generation&) = delete;

  /// False if the project was cancelled.
  [[nodiscard]] bool WritePages();
  [[nodiscard]] bool CopySupportFiles();
  /// Call it when all else has been written.
  void WriteHelpProject();
  [[nodiscard]] const OutputSession& Output() const noexcept { return mOutput; }

 private:
  /// A definition that leads to pages, with the layouts that show its items.
  struct Step {
    Ref<NamespaceDef> definition;
    std::vector<Ref<PageLayout>> layouts;
    std::vector<Step> below;
  };
  /// An item in its place.
  struct Position {
    const Step& step;
    const Ref<Object>& item;
    const Ref<Object>& parent;
    const Ref<Object>& root;
  };

  [[nodiscard]] std::vector<Step> PlanSteps(const NamespaceDefs& definitions, int depth) const;
  [[nodiscard]] std::vector<Ref<Object>> ItemsOf(const Step& step, const Ref<Object>& parent) const;
  [[nodiscard]] bool ProcessRootItem(const Step& step, const Ref<Object>& root);
  [[nodiscard]] bool ProcessItem(const Position& at);
  [[nodiscard]] bool ProcessBelow(const Position& at);
  void WritePage(const Position& at, const Ref<PageLayout>& layout);
  /// Where the page goes; none, with a note, if that is outside the output folder.
  [[nodiscard]] std::optional<std::string> PathFor(const Ref<Object>& item, const PageLayout& layout);
  void Render(const Position& at, const PageLayout& layout, const std::string& path);

  MVProject& mProject;
  Ref<PageTemplate> mTemplate;
  Ref<INamespaceProvider> mProvider;
  Ref<DataProvider> mData;
  OutputSession mOutput;
  std::string mPage;  ///< text of the page in the making; kept for its memory
};

}  // namespace quillbook::detail
