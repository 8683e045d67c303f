#include "frame/Apartment.h"

#include "frame/services/FileIcons.h"
#include "quillbook/frame/FailureReporter.h"
#include "quillbook/frame/documents/DocumentFactory.h"
#include "quillbook/topics/TopicSectionDefs.h"
#include "quillbook/topics/TopicStatuses.h"

namespace quillbook {
namespace {

/// The library-wide variables in the order of the state dump. Some exist for the dump alone: nothing fills them.
void VisitGlobals(const Object::FieldVisitor& visit) {
  const auto& apartment = Apartment::Current();
  visit("RootIncrement", apartment.RootIncrement);
  visit("mCacheCount", apartment.mCacheCount);
  visit("mCacheTopics", apartment.mCacheTopics);
  visit("mClipboardDataFormat", apartment.mClipboardDataFormat);
  visit("mClipboardTypeFormat", apartment.mClipboardTypeFormat);
  visit("LoadedNodes", apartment.LoadedNodes);
  visit("mBuildFlagColors", VariantArray());
  visit("mBuildFlagColorNames", VariantArray());
  visit("mSpellImagePath", apartment.mSpellImagePath);
  visit("mData", "");
  visit("mSData", "");
  visit("mTypeID", 0);
  visit("mReloadFlag", apartment.mReloadFlag);
  visit("mDOMFactory", apartment.mDOMFactory);
}

}  // namespace

Apartment::Apartment() {
  SetGlobalsWriter(&VisitGlobals);
}

Apartment::~Apartment() = default;

void Apartment::DropCaches() {
  mTopicSectionDefs = nullptr;
  mTopicStatuses = nullptr;
  mFileIcons = nullptr;
  mDOMFactory = nullptr;
}

Apartment& Apartment::Current() {
  thread_local Apartment apartment;
  return apartment;
}

}  // namespace quillbook
