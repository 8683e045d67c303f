#include "quillbook/topics/TopicKeyword.h"

#include "quillbook/frame/modMain.h"

namespace quillbook {

TopicKeyword::TopicKeyword() : mID(modMain::CreateGUID()) {}

const TypeInfo& TopicKeyword::StaticType() {
  static const TypeInfo type = Describe<TopicKeyword>("TopicKeyword")
                                   .Field<&TopicKeyword::mID>("mID")
                                   .Field<&TopicKeyword::mKeyword>("mKeyword")
                                   .Property<&TopicKeyword::ID, &TopicKeyword::SetID>("ID")
                                   .Property<&TopicKeyword::Keyword, &TopicKeyword::SetKeyword>("Keyword")
                                   .Done();
  return type;
}

}  // namespace quillbook
