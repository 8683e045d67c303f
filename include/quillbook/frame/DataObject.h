// Data in several formats, as it goes to the clipboard and from one window to another.
#pragma once

#include <cstdint>
#include <map>

#include "quillbook/base/Object.h"

namespace quillbook {

/// One item in one or more formats, each with a value of its own. A format is the number of a clipboard format.
///
/// A copy and a paste, by `Root`'s operations on data objects:
///
///     auto copied = New<DataObject>();
///     root->SetClipboardData(copied, DataTypeTopic, xml);
///     copied->CopyToClipboard();
///
///     const auto pasted = DataObject::FromClipboard();
///     if (root->GetClipboardDataType(pasted) == DataTypeTopic) Insert(root->GetClipboardData(pasted));
class DataObject final : public LibraryObject {
 public:
  /// Takes the place of what the format had. Bytes are a `Variant::Bytes`.
  void SetData(const Variant& Value, std::int16_t Format);
  /// True if there is a value in this format.
  [[nodiscard]] bool GetFormat(std::int16_t Format) const;
  /// Failure 461 for a format that isn't there.
  [[nodiscard]] Variant GetData(std::int16_t Format) const;

  /// Puts the values of registered formats in the place of what stands on the desktop's clipboard; texts and numbers
  /// go as UTF-16LE. False where no clipboard can be reached. Failure 13 for a value that has no text, such as an
  /// object.
  [[nodiscard]] bool CopyToClipboard() const;
  /// What another `CopyToClipboard`, in this process or another one, put on the desktop's clipboard, as bytes. Without
  /// any format if something else stands there or no clipboard can be reached.
  [[nodiscard]] static Ref<DataObject> FromClipboard();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::map<std::int16_t, Variant> mValues;
};

}  // namespace quillbook
