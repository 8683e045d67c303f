// Everything that a template can ask by bare name.
#pragma once

#include <string>
#include <string_view>

namespace quillbook {

class QBDataProvider;

/// Value of a name, in any case, for the provider's current item. A name that no item, project or build property
/// claims is looked up among the template's variables and the project's properties, and goes to the host's common
/// provider if that yields nothing.
[[nodiscard]] std::string ItemProperty(QBDataProvider& provider, std::string_view name);

/// The value of a name as a variable of the template or a property of the project, which wins; empty if it is neither.
[[nodiscard]] std::string VariableOrProjectProperty(const QBDataProvider& provider, std::string_view name);

}  // namespace quillbook
