#pragma once

#include "foundation/PropertyList.h"

#include <string>
#include <string_view>

/// The binary format of property lists, version "00": objects of one marker byte each, then a table
/// of their offsets, then a trailer that says where the table is.
namespace corvane::binaryPropertyList {

/// An error where the bytes aren't such a list. A few bytes can name the same object again and
/// again or nest without an end; a list that would come to a multiple of its size when read out, or
/// that is deeper than a hundred levels, isn't read.
Result<PropertyList> read(std::string_view bytes);

/// Text that isn't UTF-8 is written with U+FFFD in place of what is wrong.
std::string write(const PropertyList& list);

} // namespace corvane::binaryPropertyList
