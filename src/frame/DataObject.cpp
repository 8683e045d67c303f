#include "quillbook/frame/DataObject.h"

#include "quillbook/base/Failure.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

void DataObject::SetData(const Variant& Value, std::int16_t Format) {
  mValues.insert_or_assign(Format, Value);
}

bool DataObject::GetFormat(std::int16_t Format) const {
  return mValues.count(Format) != 0;
}

Variant DataObject::GetData(std::int16_t Format) const {
  const auto found = mValues.find(Format);
  if (found == mValues.end()) throw Failure(FailureNumber::FormatNotMatching);
  return found->second;
}

bool DataObject::CopyToClipboard() const {
  auto& session = Platform::Current().Session();
  ClipboardContent content;
  for (const auto& [format, value] : mValues) {
    auto name = session.ClipboardFormatName(static_cast<std::uint16_t>(format));
    if (!name.empty()) content.insert_or_assign(std::move(name), value.ToBytes());
  }
  return session.SetClipboard(content);
}

Ref<DataObject> DataObject::FromClipboard() {
  auto& session = Platform::Current().Session();
  auto result = New<DataObject>();
  for (auto& [name, bytes] : session.GetClipboard()) {
    const int format = session.RegisterClipboardFormat(name);
    if (format != 0) result->SetData(Variant::Bytes{bytes}, static_cast<std::int16_t>(format));
  }
  return result;
}

const TypeInfo& DataObject::StaticType() {
  static const TypeInfo type = Describe<DataObject>("DataObject")
                                   .Method<&DataObject::SetData>("SetData")
                                   .Method<&DataObject::GetFormat>("GetFormat")
                                   .Method<&DataObject::GetData>("GetData")
                                   .Method<&DataObject::CopyToClipboard>("CopyToClipboard")
                                   .Done();
  return type;
}

}  // namespace quillbook
