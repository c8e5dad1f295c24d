/// @file
/// How the stack's words are declared: each once, with its text, for those who use it and for the library
/// that holds it. Users include the headers of the words instead, MPL_MediaPlayerLib.h and its like.
///
/// The words are ready before the static objects of a test program, which may use them.
#pragma once

#include <QString>

#include <array>

namespace MPL::Detail
{

/// Only says what a group is: as many words as it is given.
template <class... Words>
std::array<QString, sizeof...(Words)> GroupOf(const Words&...);

} // namespace MPL::Detail

// The library that holds the words defines these otherwise; see Words.cpp.
#ifndef MPL_WORD
/// A word, and its text.
#define MPL_WORD(NAME, TEXT) extern const QString NAME
/// A group: a std::array of the words that follow its name, in this order.
#define MPL_GROUP(NAME, ...) extern const decltype(MPL::Detail::GroupOf(__VA_ARGS__)) NAME
#endif
