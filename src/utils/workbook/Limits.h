#pragma once

// What a workbook may ask of the reader, whatever it claims. All of it is far beyond any table of texts.
namespace Workbook::Limits {

constexpr int parts = 4096;                // files in the archive
constexpr int partSize = 32 * 1024 * 1024; // bytes of one file, unpacked
constexpr int depth = 32;                  // elements inside each other
constexpr int tagSize = 64 * 1024;  // bytes of one tag or comment: expat begins anew on it with each piece
constexpr int elements = 2'000'000; // of one file
constexpr int relationships = 4096; // of one file; and sheets of the workbook
constexpr int textSize = 4 * 32767; // bytes of one cell's UTF-8: the format allows 32767 characters
constexpr int rowNumber = 1048576;  // the format's own last row
constexpr int columnNumber = 16384; // and column
constexpr int columns = 256;        // cells to the right of them are not read

} // namespace Workbook::Limits
