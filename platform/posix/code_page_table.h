// code_page_table.h: code pages of one or two bytes a character, as tables.
#pragma once

#include "code_page.h"

#include <unicode/ucnv.h>

#include <memory>

namespace qel {

struct SConverterCloser
{
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using CConverter = std::unique_ptr<UConverter, SConverterCloser>;

/// A page of single bytes, read through the converter once.
std::unique_ptr<const CCodePage> MakeSingleBytePage(unsigned int number, UConverter& converter);

/// A page in which some bytes lead a pair.
/// @param substitute  for a pair that means nothing and for a leading byte at the end
std::unique_ptr<const CCodePage> MakeDoubleBytePage(unsigned int number, UConverter& converter,
                                                    wchar_t substitute);

} // namespace qel
