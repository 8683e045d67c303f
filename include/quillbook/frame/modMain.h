// Library-wide state and free helpers that every class of the object library uses.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Ref.h"
#include "quillbook/host/PageTemplate.h"

namespace quillbook {

class DocumentFactory;
class HtmlDocument;
class MVProject;
class QBProject;
class TemplateStore;
class Topic;
class TopicSectionDefs;
class TopicStatuses;

namespace modMain {

// Library-wide state: once per apartment, that is per thread.

/// Number of live `Root` objects.
[[nodiscard]] std::int32_t& RootIncrement() noexcept;
/// Counter of a build; 0 at the start of each.
[[nodiscard]] std::int32_t& mCacheCount() noexcept;
/// Replaced by an empty collection at the start of each build; nothing else reads or fills it.
[[nodiscard]] Ref<Collection<Ref<Object>>>& mCacheTopics() noexcept;
/// Registered clipboard format numbers; 0 until registered.
[[nodiscard]] std::int16_t& mClipboardDataFormat() noexcept;
[[nodiscard]] std::int16_t& mClipboardTypeFormat() noexcept;
/// Keys of the nodes met while a project file's table of contents is being read; nothing at any other time.
[[nodiscard]] Ref<Collection<std::string>>& LoadedNodes() noexcept;
/// What `Root::SpellImagePath` holds.
[[nodiscard]] std::string& mSpellImagePath() noexcept;
/// What `Root::ReloadFlag` holds.
[[nodiscard]] bool& mReloadFlag() noexcept;
/// Makes the documents of `CreateDOM`; nothing until the first one. Replaceable; dropped when the last `Root` goes.
[[nodiscard]] Ref<DocumentFactory>& mDOMFactory() noexcept;

/// Statuses of "statuscodes.xml" in the configuration directory; empty if there is no such file. Cached until the
/// last `Root` goes.
[[nodiscard]] Ref<quillbook::TopicStatuses> TopicStatuses();
/// The kinds of topic sections: one shared object while a `Root` lives, else a new one at each call.
[[nodiscard]] Ref<quillbook::TopicSectionDefs> TopicSectionDefs();

// Configuration.

/// The configuration directory in Windows form, with a trailing "\".
[[nodiscard]] std::string ConfigPath();
/// Setting of the current user; `DefaultValue` where it is missing or empty. `ExtraPath` names a subkey, or is empty.
[[nodiscard]] std::string GetAppValue(std::string_view ValueName, std::string_view DefaultValue,
                                      std::string_view ExtraPath = {});
void SetAppValue(std::string_view ValueName, std::string_view Value, std::string_view ExtraPath = {});
/// True if the full generator is installed; asked once per apartment.
[[nodiscard]] bool IsMavenscriptInstalled();

// Text.

/// A new key: braces and upper-case hexadecimal digits in groups, 38 characters.
[[nodiscard]] std::string CreateGUID();
/// Replaces what may not stand in a file name: "a:b*c" gives "a-b c".
[[nodiscard]] std::string SafeFileName(std::string_view Filename);
/// Without one double quote at each end.
[[nodiscard]] std::string StripQuotes(std::string_view s);
/// Decodes percent escapes, also those that decoding brings forth: "%2541" gives "A". The codes are those of the
/// system's ANSI code page; what is no hexadecimal number counts as 0. HTML entities stay. Linear time.
[[nodiscard]] std::string RemoveEntities(std::string_view Source);
/// Without a leading "about:blank".
[[nodiscard]] std::string GetLinkText(std::string_view Source);
/// True for "file://" in any case and for every text without a colon.
[[nodiscard]] bool IsFileURL(std::string_view URL);
/// Path in Windows form of a file URL, percent escapes decoded.
[[nodiscard]] std::string FileURLToFileName(std::string_view URL);
/// Inner text of the body of an HTML document; the whole text where there is no body element.
[[nodiscard]] std::string ReturnBody(std::string_view CompleteDocument);

// Documents.

/// HTML text as a document. A page of bytes, one character U+0000 to U+00FF for each, as `UnicodeHelper` makes them, is
/// read as these bytes. Waits up to three seconds for the document to be complete and gives it in any case.
[[nodiscard]] Ref<HtmlDocument> CreateDOM(std::string_view HTML);
/// True if the document has an anchor of that name, ignoring case. Never fails.
[[nodiscard]] bool IsAnchorValid(const Ref<HtmlDocument>& DOM, std::string_view Name);
/// A page with `HeadHTML` and `BodyHTML` in its head and body, whose `html` element declares the prefix of Help 2.
[[nodiscard]] std::string HelpPage(std::string_view HeadHTML, std::string_view BodyHTML);

// Projects.

/// The templates of the configuration directory.
[[nodiscard]] Ref<TemplateStore> InstalledTemplates();
/// Installed templates of this library's namespace whose support flags hold `SupportsFlag` (regarding case), keyed by
/// name. An empty flag gives all.
[[nodiscard]] Ref<PageTemplates> QuillbookPageTemplates(std::string_view SupportsFlag = {});
/// Prepares a topic's removal: asks what shall become of the contents entries that point to it, and removes related
/// links to it from the other topics. The caller removes the topic, unless `Cancel` comes back True. `NoPrompt` comes
/// back True if the user has been asked.
void BeforeDeleteTopic(const Ref<Topic>& T, bool& Cancel, bool& NoPrompt);
/// A new host project, ready for a build of this library.
[[nodiscard]] Ref<MVProject> NewMVProject();
/// The project that a host project was set up for; nothing if there is none.
[[nodiscard]] Ref<QBProject> GetQBProject(const Ref<MVProject>& Project);

}  // namespace modMain
}  // namespace quillbook
