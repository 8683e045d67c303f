// What a project tells its listeners: the source interface "__QBProject".
#pragma once

#include <cstdint>
#include <string_view>

#include "quillbook/base/Event.h"
#include "quillbook/base/Ref.h"

namespace quillbook {

class BuildProfile;
class BuildResult;
class GlossaryItem;
class MVProject;
class Object;
class OtherFile;
class QBNode;
class Task;
class Topic;
class TopicCategory;
class TopicLink;
class TopicSection;

/// Check-out state of a file under source control. Part of the interface for the editor's sake only. Frozen values.
enum CheckOutStatusEnum : std::int32_t {
  StatusCheckedIn = 0,
  StatusCheckedOutWrongDirectory = 1,
  StatusCheckedOutToOtherUser = 2,
  StatusCheckedOutToCurrentUser = 3,
};

/// Parts of a project that source control knows as files of their own. Frozen values.
enum ProjectElementTypeEnum : std::int32_t {
  ProjectElementTableOfContents = 1,
  ProjectElementManifests = 2,
  ProjectElementGlossary = 3,
  ProjectElementTasks = 4,
};

/// How bad a message of a build is. Frozen values.
enum BuildMessageLevel : std::int32_t { bmWarning = 0, bmError = 1 };

/// The events of one project, delivered synchronously on the caller's thread inside the operation that caused them,
/// in the order of connecting. A listener may call back into the project; listeners of `LoadProgress` must not touch
/// the project that is being loaded. A failure in a listener comes back into the raising operation.
struct QBProjectEvents {
  /// Name of the source interface as clients know it.
  static constexpr std::string_view PublishedName = "__QBProject";

  /// Dispatch numbers of the interface. Frozen: clients subscribe by them.
  enum class Number : std::int32_t {
    Changed = 1,
    BuildProfilesChanged = 2,
    BuildProfileChanged = 3,
    MVProjectChanged = 4,
    TopicAdded = 5,
    TopicRemoved = 6,
    TopicChanged = 7,
    TopicSectionChanged = 8,
    TopicReOrdered = 9,
    TopicTopicLinkChanged = 10,
    TopicTopicLinksChanged = 11,
    QBNodeChanged = 12,
    QBNodeRemoved = 13,
    TopicCategoryAdded = 14,
    TopicCategoryChanged = 15,
    TopicCategoryRemoved = 16,
    TopicCategoryReOrdered = 17,
    OtherFileAdded = 18,
    OtherFileRemoved = 19,
    OtherFileChanged = 20,
    CheckoutStatusChanged = 21,
    TopicCheckoutStatusChanged = 22,
    OtherFileCheckoutStatusChanged = 23,
    ProjectElementCheckOutStatusChanged = 24,
    BuildProgress = 25,
    TopicTemplateChanged = 26,
    GlossaryItemAdded = 27,
    GlossaryItemRemoved = 28,
    GlossaryItemChanged = 29,
    TaskAdded = 30,
    TaskChanged = 31,
    TaskRemoved = 32,
    BuildProfileAdded = 33,
    BuildProfileRemoved = 34,
    LinkCheckStartTopic = 35,
    DirtyStateChanged = 36,
    BuildErrorsOrWarnings = 37,
    BuildMessage = 38,
    LoadProgress = 39,
    MessageBox = 40,
  };

  Event<> Changed;  ///< a setting of the project itself
  Event<> BuildProfilesChanged;
  Event<const Ref<BuildProfile>&> BuildProfileChanged;
  Event<const Ref<MVProject>&> MVProjectChanged;  ///< nothing when the host project is dropped
  Event<const Ref<Topic>&> TopicAdded;
  Event<const Ref<Topic>&> TopicRemoved;
  Event<const Ref<Topic>&> TopicChanged;
  Event<const Ref<Topic>&, const Ref<TopicSection>&> TopicSectionChanged;
  Event<const Ref<Topic>&> TopicReOrdered;
  Event<const Ref<Topic>&, const Ref<TopicLink>&> TopicTopicLinkChanged;
  Event<const Ref<Topic>&> TopicTopicLinksChanged;
  Event<const Ref<QBNode>&> QBNodeChanged;
  Event<const Ref<QBNode>&> QBNodeRemoved;
  Event<const Ref<TopicCategory>&> TopicCategoryAdded;
  Event<const Ref<TopicCategory>&> TopicCategoryChanged;
  Event<const Ref<TopicCategory>&> TopicCategoryRemoved;
  Event<const Ref<TopicCategory>&> TopicCategoryReOrdered;
  Event<const Ref<OtherFile>&> OtherFileAdded;
  Event<const Ref<OtherFile>&> OtherFileRemoved;
  Event<const Ref<OtherFile>&> OtherFileChanged;
  Event<> CheckoutStatusChanged;                        ///< never raised
  Event<const Ref<Topic>&> TopicCheckoutStatusChanged;  ///< never raised
  Event<const Ref<OtherFile>&> OtherFileCheckoutStatusChanged;
  Event<ProjectElementTypeEnum&> ProjectElementCheckOutStatusChanged;  ///< never raised
  Event<std::string_view> BuildProgress;                               ///< `Status`; empty at the end of a build
  Event<std::string_view> TopicTemplateChanged;                        ///< `NewTemplateName`
  Event<const Ref<GlossaryItem>&> GlossaryItemAdded;
  Event<const Ref<GlossaryItem>&> GlossaryItemRemoved;
  Event<const Ref<GlossaryItem>&> GlossaryItemChanged;
  Event<const Ref<Task>&> TaskAdded;
  Event<const Ref<Task>&> TaskChanged;
  Event<const Ref<Task>&> TaskRemoved;
  Event<const Ref<BuildProfile>&> BuildProfileAdded;
  Event<const Ref<BuildProfile>&> BuildProfileRemoved;
  Event<std::int32_t> LinkCheckStartTopic;  ///< `TopicIndex`, from 1
  /// Raised at every write of `Dirty`, also where nothing changed, and at a write of True to `TopicsDirty`.
  Event<> DirtyStateChanged;
  /// `doc`, `res`, `Cancel`: a listener that sets `Cancel` ends the build.
  Event<const Ref<Object>&, const Ref<BuildResult>&, bool&> BuildErrorsOrWarnings;
  Event<std::string_view, BuildMessageLevel> BuildMessage;  ///< `Message`, `Level`
  Event<std::string_view> LoadProgress;                     ///< `Caption`
  /// `Message`, `Buttons`, `Title`, `Result`, `CancelDefault`: a listener that sets `CancelDefault` has shown the
  /// message itself and answers with `Result`.
  Event<std::string_view, std::int32_t, std::string_view, std::int32_t&, bool&> MessageBox;
};

}  // namespace quillbook
