#pragma once

#include <QString>

/// `../Parameters/screen.pix`: three 32-bit big-endian numbers, the pixel's width and height in
/// micrometres and the number of the frequency.
namespace screenFile {

inline constexpr char name[] = "screen.pix";

/// There is such a file, whether it can be read or not.
bool exists();

/// Reads the file into the store; what the file is too short for becomes 0. If it can't be read the
/// store stays as it is and the error string is returned.
QString read();

/// Replaces the file in one step by the values of the store. Returns the error string, empty if
/// all went well; the old file then stands as it was.
QString write();

} // namespace screenFile
