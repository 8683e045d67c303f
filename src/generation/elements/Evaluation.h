// The evaluation of one template element.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "quillbook/base/Ref.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook {

class FileSystemObject;
class Object;
class QBDataProvider;
class QBProject;

/// One element on its way to its text: condition gate, subject, the element's own function or the search by name, and
/// the steps that follow every element.
class Evaluation {
 public:
  Evaluation(QBDataProvider& provider, const Ref<TemplateElement>& element, Ref<FileSystemObject>& file);

  [[nodiscard]] std::string Run();

  // For the elements

  [[nodiscard]] QBDataProvider& Provider() const noexcept { return mProvider; }
  [[nodiscard]] const TemplateElement& Element() const noexcept { return *mElement; }
  /// What the element speaks of. For texts and dates of a topic that is the topic, also where the item is an entry
  /// that leads to it; for all others the current item. May be nothing.
  [[nodiscard]] const Ref<Object>& Subject() const noexcept { return mSubject; }
  /// The file that the page goes to, or nothing. An element may put another in its place.
  [[nodiscard]] Ref<FileSystemObject>& File() const noexcept { return mFile; }
  /// In lower case.
  [[nodiscard]] const std::string& ElementType() const noexcept { return mType; }
  /// Failure 91 outside a build.
  [[nodiscard]] QBProject& Project() const;
  /// Failure 5 if the element has no such attribute.
  [[nodiscard]] const std::string& RequiredAttribute(std::string_view name) const;
  /// Empty if the element has no such attribute.
  [[nodiscard]] std::string_view Attribute(std::string_view name) const noexcept;
  /// The element's text stands as it is: neither replacement texts nor further passes apply.
  void TakeVerbatim() noexcept { mVerbatim = true; }
  /// `text` with its elements evaluated for this provider and file.
  [[nodiscard]] std::string ParseHere(std::string_view text) const;

 private:
  [[nodiscard]] std::optional<std::string> Refusal() const;
  [[nodiscard]] Ref<Object> FindSubject() const;
  [[nodiscard]] std::string Unclaimed() const;
  void Finish(std::string& result) const;
  void ApplyReplacementTexts(std::string& result) const;

  QBDataProvider& mProvider;
  const Ref<TemplateElement>& mElement;
  Ref<FileSystemObject>& mFile;
  std::string mType;
  Ref<Object> mSubject;
  bool mVerbatim = false;
};

/// Gives an element's text.
using ElementFunction = std::string (*)(Evaluation& e);

/// The function of an element type in lower case; null for a type that is none of this library's.
[[nodiscard]] ElementFunction FindElement(std::string_view type) noexcept;

}  // namespace quillbook
