// What all pages are made from.
#pragma once

#include "host/pages/memory.h"
#include "host/pages/site_settings.h"
#include "host/pages/target.h"
#include "host/server/catalogue.h"
#include "host/server/question.h"
#include "host/views/views.h"

namespace cmpihost::pages {

/// A page that is there, or tells why it is not.
struct Page {
    unsigned status = 200;
    std::string content_type = "text/html; charset=utf-8";
    std::string body{};
};

/// What a page is asked for with.
struct Visit {
    const server::Catalogue& catalogue;
    const views::Views& views;
    const SiteSettings& settings;
    const server::Namespace& main; ///< that links need not name
    const Target& target;
    const std::string& rest; ///< of the path, behind the page's own part
    const server::Question& question;
    Memory& memory;
};

/// The namespace of a name; null if there is none. Empty: the main one.
const server::Namespace* namespace_of(const Visit& visit, const std::string& name);

/// A page that says what is wrong.
Page error_page(unsigned status, const std::string& title, const std::string& text);

Page front_page(const Visit& visit);  ///< /
Page class_page(const Visit& visit);  ///< /class/NAME
Page object_page(const Visit& visit); ///< /object/PATH
Page graph_page(const Visit& visit);  ///< /graph
Page asset(const Visit& visit);       ///< /assets/NAME

} // namespace cmpihost::pages
