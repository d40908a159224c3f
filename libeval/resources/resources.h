// resources.h: the texts of this library's own string table.
#pragma once

#include <string>

namespace qel {

/// Numbers of the texts. Names of a value's types begin at kStringTypeName, in the order of the types.
enum EStringId : unsigned int
{
    kStringGlobal = 15000,
    kStringImage = 15001,
    kStringYes = 15002,
    kStringNo = 15003,
    kStringBlob = 15004,
    kStringTypeName = 15200
};

/// Loads a text from this library's own table and no other; empty when there is none of this number.
///
/// The thread's resource handle is this library's meanwhile; it is put back even when memory runs out.
std::wstring ModuleString(unsigned int id);

} // namespace qel
