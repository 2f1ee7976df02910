#include "host/cli/table.h"

#include <algorithm>
#include <string_view>

namespace cmpihost {

namespace {

/// Columns that a text takes: its UTF-8 characters.
std::size_t width_of(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; }));
}

} // namespace

std::string styled(const std::string& text, const char* style, bool colour) {
    return colour ? std::string("\033[") + style + "m" + text + "\033[0m" : text;
}

std::vector<std::size_t> widths_of(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths;
    for (const Row& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], width_of(row[i]));
    }
    return widths;
}

std::string aligned_row(const Row& cells, const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += cells[i];
        if (i + 1 < cells.size())
            line.append(std::max(widths[i], width_of(cells[i])) - width_of(cells[i]) + 2, ' ');
    }
    return line;
}

std::vector<std::string> aligned(const std::vector<Row>& rows) {
    const std::vector<std::size_t> widths = widths_of(rows);
    std::vector<std::string> lines;
    lines.reserve(rows.size());
    for (const Row& row : rows)
        lines.push_back(aligned_row(row, widths));
    return lines;
}

std::string table_text(const std::vector<Row>& rows, bool colour) {
    std::vector<std::string> lines = aligned(rows);
    lines.front() = styled(lines.front(), bold, colour);
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

} // namespace cmpihost
