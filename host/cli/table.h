// Texts in columns.
#pragma once

#include <string>
#include <vector>

namespace cmpihost {

using Row = std::vector<std::string>;

/// A text in a terminal's colour or weight.
std::string styled(const std::string& text, const char* style, bool colour);
inline constexpr const char* bold = "1";
inline constexpr const char* cyan = "1;36";

/// Columns that the widest cells take.
std::vector<std::size_t> widths_of(const std::vector<Row>& rows);

/// A line of cells in columns of these widths, two blanks apart. A wider cell moves those behind it.
std::string aligned_row(const Row& cells, const std::vector<std::size_t>& widths);

/// One line per row, its cells in columns two blanks apart; no blanks and no newline at the end of a line.
std::vector<std::string> aligned(const std::vector<Row>& rows);

/// Lines in columns under a header, the first row.
std::string table_text(const std::vector<Row>& rows, bool colour);

} // namespace cmpihost
