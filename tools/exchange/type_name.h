// type_name.h: the words by which column types are given and shown: "integer", "reference".
#pragma once

#include <qelprop4/qelprop4.h>

#include <string>
#include <vector>

namespace tool {

/// The program's word for a type; "type N" for a number that is none.
std::string TypeName(CQelProperty::EType type);
/// @return false for a word that names no type of a column
bool TypeOfName(const std::string& name, CQelProperty::EType& type);
/// Every word that TypeOfName takes, in the order of the types.
std::vector<std::string> TypeNames();

} // namespace tool
