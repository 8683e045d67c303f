// Evaluates a template text against data that is itself a text.
#pragma once

#include <string>
#include <string_view>

namespace quillbook::toy {

/// `data` has a line "name=value" each; in a value, "\n" is a line break and "\\" a backslash. Empty lines and lines
/// that begin with "#" don't count.
///
///   Title, QualifiedName, Summary, Draft   members of the current item
///   child                                  title of a child of the item; may occur again
///   kind                                   qualified kind of the item
///   type                                   type name that the provider is given for the item
///   scrap.NAME                             text of a scrap
///   variable.NAME                          value of a template variable
///   host.help, host.compile, host.page, host.defaultpage, host.codepage, host.helpfile,
///   host.helpprojectfile
///   any other name                         what an element of that type yields
[[nodiscard]] std::string EvaluateCase(std::string_view text, std::string_view data);

}  // namespace quillbook::toy
