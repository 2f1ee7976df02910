#include "host/pages/html.h"

#include "host/cimxml/characters.h"

namespace cmpihost::pages {

std::string escaped(std::string_view text) {
    std::string out;
    cimxml::append_escaped(out, text);
    return out;
}

std::string link(std::string_view url, std::string_view text) {
    return "<a href=\"" + escaped(url) + "\">" + escaped(text) + "</a>";
}

std::string grouped(std::uint64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t at = digits.size(); at > 3; at -= 3)
        digits.insert(at - 3, 1, ',');
    return digits;
}

std::string counted(std::uint64_t number, const std::string& what) {
    return grouped(number) + " " + what + (number == 1 ? "" : "s");
}

std::string page(std::string_view title, std::string_view trail, std::string_view body) {
    const std::string name = escaped(title);
    std::string html = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                       "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
                       name + " - cmpihost</title>\n" +
                       "<link rel=\"stylesheet\" href=\"/assets/style.css\">\n"
                       "<link rel=\"icon\" href=\"/assets/icon.svg\" type=\"image/svg+xml\">\n"
                       "<script src=\"/assets/live.js\" defer></script>\n</head>\n<body>\n<header>\n"
                       "<nav aria-label=\"Pages\"><a href=\"/\">Classes</a> <a href=\"/graph\">Graph</a> "
                       "<a href=\"/metrics\">Metrics</a></nav>\n</header>\n<main>\n";
    if (!trail.empty())
        html.append("<p class=\"trail\">").append(trail).append("</p>\n");
    html += "<h1>" + name + "</h1>\n";
    return html.append(body).append("</main>\n</body>\n</html>\n");
}

std::string scrolled(std::string_view label, std::string_view body) {
    std::string html =
        "<div class=\"scrolled\" role=\"region\" tabindex=\"0\" aria-label=\"" + escaped(label) + "\">\n";
    return html.append(body).append("</div>\n");
}

} // namespace cmpihost::pages
