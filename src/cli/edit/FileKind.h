// quillbook files
#pragma once

#include "cli/edit/CollectionKind.h"
#include "quillbook/structure/OtherFiles.h"

namespace quillbook::cli {

/// The files of a project that aren't topics.
class FileKind final : public CollectionKind<OtherFile, OtherFiles> {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;
  [[nodiscard]] bool IsNamed(QBProject& project, const Record& record, std::string_view address) const override;
  [[nodiscard]] std::string Warning(QBProject& project, const Record& record) const override;

 protected:
  [[nodiscard]] Ref<OtherFiles> Members(const Scope& scope) const override { return scope.project.OtherFiles; }
  [[nodiscard]] Ref<OtherFile> Make(const Scope& scope, const std::string& name) const override;
  [[nodiscard]] std::string MemberKey(const OtherFile& file) const override { return file.LocalSpec(); }
};

}  // namespace quillbook::cli
