// The elements of the template language, by family.
#pragma once

#include "generation/elements/Evaluation.h"

namespace quillbook::elements {

// Texts: TextElements.cpp
std::string Literal(Evaluation& e);
std::string Include(Evaluation& e);
std::string TopicSection(Evaluation& e);
std::string TaggedComment(Evaluation& e);
std::string Scrap(Evaluation& e);
std::string DesignTime(Evaluation& e);

// Lists of items: ListElements.cpp
std::string FilteredItemList(Evaluation& e);

// The contents: ContentsElements.cpp
std::string TableOfContents(Evaluation& e);

// Values: ValueElements.cpp
std::string Variable(Evaluation& e);
std::string ProjectProperty(Evaluation& e);
std::string IncrementingValue(Evaluation& e);
std::string GlossaryItemTerm(Evaluation& e);
std::string GlossaryItemDefinition(Evaluation& e);
std::string CreatedOn(Evaluation& e);
std::string ModifiedOn(Evaluation& e);
std::string LinkCaption(Evaluation& e);
std::string LinkUrl(Evaluation& e);

// Files: FileElements.cpp
std::string FileName(Evaluation& e);
std::string HtmlBase(Evaluation& e);
std::string StyleSheets(Evaluation& e);
std::string Scripts(Evaluation& e);
std::string CheckForFile(Evaluation& e);

}  // namespace quillbook::elements
