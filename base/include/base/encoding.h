// Bytes of files, serial lines and sockets.
#pragma once

#include <string>
#include <string_view>

namespace brenvo::base {

// UTF-8 to Windows-1252; a character outside it becomes "?".
std::string ToWindows1252(std::string_view text);
// The way back; one of the five bytes that stand for nothing becomes U+FFFD.
std::string FromWindows1252(std::string_view bytes);
// UTF-8 to Latin-1; a character outside it becomes "?".
std::string ToLatin1(std::string_view text);
// The way back, for any bytes.
std::string FromLatin1(std::string_view bytes);
// A file's bytes without the mark of UTF-8 that some editors put at its beginning.
std::string_view WithoutByteOrderMark(std::string_view bytes);

}  // namespace brenvo::base
