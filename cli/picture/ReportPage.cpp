#include "cli/picture/ReportPage.h"

#include "cli/picture/Panels.h"
#include "cli/picture/markup.h"
#include "cli/picture/pageParts.h"
#include "cli/words/Failure.h"
#include "cli/words/Letters.h"
#include "cli/words/VisibleText.h"

#include <charconv>

namespace vexroc {

namespace {

using markup::pixels;

/// A source of the content policy: bytes given in hexadecimal digits, spelled in base 64.
std::string sourceOf(const PagePart& part)
{
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string base64;
    for (std::size_t i = 0; i < part.hash.size(); i += 6) { // three bytes are four digits
        std::string bytes(part.hash.substr(i, 6));
        const std::size_t padding = (6 - bytes.size()) / 2;
        bytes.append(2 * padding, '0');
        unsigned group = 0;
        std::from_chars(bytes.data(), bytes.data() + bytes.size(), group, 16);
        for (int shift = 18; shift >= 0; shift -= 6)
            base64 += digits[group >> shift & 63];
        base64.replace(base64.size() - padding, padding, padding, '=');
    }
    return "'sha256-" + base64 + "'";
}

std::string head()
{
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; script-src "
        + sourceOf(pageScript) + "; style-src " + sourceOf(pageStyle)
        + "; base-uri 'none'; form-action 'none'\">\n<meta name=\"viewport\" content=\"width=device-width\">\n"
          "<title>ROC analysis</title>\n<style>"
        + std::string(pageStyle.text) + "</style>\n</head>\n<body>\n<main>\n";
}

std::string figures(const Drawing& drawing)
{
    constexpr double edge = 8; // of a panel, that a page needs not
    std::string html = "<div id=\"curves\">\n";
    const PanelStyle style{.use = PanelUse::explored};
    for (const Panel& panel : panelsOf(drawing, style))
        html += "<svg viewBox=\"" + pixels(edge) + " 0 " + pixels(style.width() - 2 * edge) + " "
            + pixels(style.height()) + "\" role=\"img\" aria-label=\"" + std::string(panel.title) + ": "
            + std::string(panel.y) + " against " + std::string(panel.x)
            + ", one line per curve of the legend; the tables below tell the numbers\">\n" + panel.svg + "</svg>\n";
    return html + "</div>\n";
}

std::string legendRow(std::size_t curve, const std::vector<std::string>& cells)
{
    std::string html = "<tr><th scope=\"row\" class=\"name\"><svg width=\"60\" height=\"12\" aria-hidden=\"true\"><g "
        + markup::colourOf(curve) + "><path d=\"M1 6H59\" stroke=\"currentColor\" stroke-width=\"2.5\""
        + markup::dashesOf(curve) + "/></g></svg><bdi>" + htmlText(cells.front()) + "</bdi></th>";
    for (std::size_t i = 1; i < cells.size(); ++i)
        html += "<td>" + htmlText(cells[i]) + "</td>";
    return html + "</tr>\n";
}

std::string legend(const Drawing& drawing)
{
    if (drawing.curves.empty())
        return "";
    const std::vector<std::vector<std::string>> rows = drawing.legend();
    std::string html = "<div class=\"wide\"><table id=\"legend\">\n<caption>Legend</caption>\n<thead><tr>";
    for (std::size_t i = 0; i < rows.front().size(); ++i)
        html += (i == 0 ? "<th scope=\"col\" class=\"name\">" : "<th scope=\"col\">") + htmlText(rows[0][i]) + "</th>";
    html += "</tr></thead>\n<tbody>\n";
    for (std::size_t c = 0; c < drawing.curves.size(); ++c)
        html += legendRow(c, rows[c + 1]);
    return html + "</tbody>\n</table></div>\n";
}

std::string list(const char* title, const std::vector<Remark>& remarks)
{
    if (remarks.empty())
        return "";
    std::string html = std::string("<h2>") + title + "</h2>\n<ul>\n";
    for (const Remark& remark : remarks)
        html += "<li>" + htmlText(remark.text) + "</li>\n";
    return html + "</ul>\n";
}

} // namespace

std::string ReportPage::html() const
{
    std::string page = head() + "<h1>" + htmlText(heading.front()) + "</h1>\n";
    for (std::size_t i = 1; i < heading.size(); ++i)
        page += "<p>" + htmlText(heading[i]) + "</p>\n";
    page += figures(drawing) + legend(drawing);
    for (const std::string& note : drawing.notes)
        page += "<p class=\"note\">" + htmlText(note) + ".</p>\n";
    page += tables;
    page += list("Cautions", cautions) + list("Notes", notes) + "<h2>How this page was made</h2>\n<pre>"
        + htmlText(command) + "</pre>\n<p>vexroc " + htmlText(version) + "</p>\n</main>\n"
        + "<div id=\"tip\" role=\"status\" hidden></div>\n<script>";
    return page.append(pageScript.text) + "</script>\n</body>\n</html>\n";
}

void ReportPage::requirePossible(const std::string& file)
{
    if (!endsWithIgnoringCase(file, ".html") && !endsWithIgnoringCase(file, ".htm"))
        throw usageError("--report " + inQuotes(file)
                         + ": expected a name that ends in .html or .htm; --plot makes "
                           "pictures, --output keeps the tables");
}

} // namespace vexroc
