#include "World.h"

#include "quillbook/frame/services/FileSystemObject.h"

namespace quillbook::model {

std::uint64_t Dice::Next() noexcept {
  auto value = mState += 0x9E3779B97F4A7C15u;
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9u;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBu;
  return value ^ (value >> 31);
}

World::World() {
  std::filesystem::create_directory(folder.Native("p"));
}

Ref<QBProject> World::NewProject() const {
  auto project = New<QBProject>();
  project->Filename->SetFullName(Path("p/help.qbp"));
  return project;
}

std::string World::Do(void (*operation)(World&), std::uint64_t seed) {
  dice = Dice(seed);
  mExpected.clear();
  mSaid.clear();
  mFault.clear();
  mStart = Date::Now();
  try {
    operation(*this);
  } catch (const Failure& failure) {
    return "the step raised " + failure.Description();
  }
  if (const auto reported = failures.Take(); reported != mExpected)
    return "reported " + testing::PrintToString(reported) + ", not " + testing::PrintToString(mExpected);
  return mFault.empty() ? FindDifference(*this) : mFault;
}

void World::Expect(std::string_view procedure, FailureNumber number) {
  Expect(std::string(procedure) + " " + std::to_string(static_cast<int>(number)));
}

void World::Say(std::string_view what, std::string_view value) {
  mSaid.append(mSaid.empty() ? "" : ", ").append(what);
  if (!value.empty()) mSaid.append(" ").append(testing::PrintToString(value));
}

}  // namespace quillbook::model
