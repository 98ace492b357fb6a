// The side of libxslt of the workloads with the preprocessor. Stylesheets are compiled before.
#include <libxslt/transform.h>
#include <libxslt/xsltInternals.h>

#include <memory>
#include <string>

#include "peers/libxml2.h"
#include "preprocessed.h"
#include "scratch.h"
#include "workload.h"

namespace {

using bench::xml_document_t;

std::string stylesheet(const std::string& templates) {
    return "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
           templates + "</xsl:stylesheet>";
}

void transform(benchmark::State& state, std::size_t items, const std::string& templates,
               const std::string& text, const char* name = nullptr) {
    const std::unique_ptr<xsltStylesheet, decltype(&xsltFreeStylesheet)> style(
        xsltParseStylesheetDoc(bench::parsed(stylesheet(templates)).release()),
        xsltFreeStylesheet);
    const xml_document_t source = bench::parsed(text, name);
    xml_document_t result;
    bench::measure(
        state, items,
        {[&] { result.reset(); },
         [&] { result.reset(xsltApplyStylesheet(style.get(), source.get(), nullptr)); },
         [&] {
             return bench::tally_of(result);
         }});
}

/// Templates that write `item` for each number `n` from 1 to `count`. A language without loops
/// calls itself, and not as deep as `count`: ranges are halved until they are short.
std::string loop_over(std::size_t count, const std::string& item) {
    return "<xsl:template match='/r'><r><xsl:call-template name='range'>"
           "<xsl:with-param name='n' select='1'/><xsl:with-param name='last' select='" +
           std::to_string(count) +
           "'/></xsl:call-template></r></xsl:template>"
           "<xsl:template name='range'><xsl:param name='n'/><xsl:param name='last'/>"
           "<xsl:choose><xsl:when test='$last - $n &lt; 1000'>"
           "<xsl:call-template name='items'><xsl:with-param name='n' select='$n'/>"
           "<xsl:with-param name='last' select='$last'/></xsl:call-template></xsl:when>"
           "<xsl:otherwise>"
           "<xsl:variable name='middle' select='floor(($n + $last) div 2)'/>"
           "<xsl:call-template name='range'><xsl:with-param name='n' select='$n'/>"
           "<xsl:with-param name='last' select='$middle'/></xsl:call-template>"
           "<xsl:call-template name='range'><xsl:with-param name='n' select='$middle + 1'/>"
           "<xsl:with-param name='last' select='$last'/></xsl:call-template>"
           "</xsl:otherwise></xsl:choose></xsl:template>"
           "<xsl:template name='items'><xsl:param name='n'/><xsl:param name='last'/>" +
           item +
           "<xsl:if test='$n &lt; $last'><xsl:call-template name='items'>"
           "<xsl:with-param name='n' select='$n + 1'/>"
           "<xsl:with-param name='last' select='$last'/></xsl:call-template></xsl:if>"
           "</xsl:template>";
}

void loop(benchmark::State& state) {
    const std::size_t count = bench::loop_passes();
    transform(state, count,
              loop_over(count, "<amp id='{$n}' address='{$n*2+1}' name='amplifier {$n}'/>"),
              "<r/>");
}

void include(benchmark::State& state, bool counted) {
    const bench::scratch_folder_t folder;
    bench::parts_write(folder);
    transform(
        state, bench::includes(),
        "<xsl:template match='/r'><r><xsl:for-each select='include'>"
        "<xsl:copy-of select='document(@file)/r/*'/></xsl:for-each></r></xsl:template>",
        "<r>" + bench::directives(bench::includes(), "<include file='part", ".xml'/>", counted) +
            "</r>",
        folder.file("whole.xml").c_str());
}

void include_files(benchmark::State& state) {
    include(state, true);
}

void include_one_file(benchmark::State& state) {
    include(state, false);
}

void plain_elements(benchmark::State& state) {
    transform(state, bench::sized(100000),
              "<xsl:template match='@*|node()'><xsl:copy>"
              "<xsl:apply-templates select='@*|node()'/></xsl:copy></xsl:template>",
              bench::plain_elements());
}

void definition(benchmark::State& state) {
    const std::size_t count = bench::rows();
    transform(state, count,
              loop_over(count, "<row id='{$n}' address='{$n*2+1}'>"
                               "<xsl:if test='$n mod 2 = 0'><even/></xsl:if>"
                               "<xsl:choose>"
                               "<xsl:when test='$n mod 3 = 0'><zone name='bar'/></xsl:when>"
                               "<xsl:when test='$n mod 3 = 1'><zone name='hall'/></xsl:when>"
                               "<xsl:otherwise><zone name='terrace'/></xsl:otherwise>"
                               "</xsl:choose></row>"),
              "<r/>");
}

constexpr bench::workload_t rows[] = {
    {"P1", loop},           {"P2", include_files}, {"P2c", include_one_file},
    {"P3", plain_elements}, {"P4", definition},
};
const bench::workloads_t workloads(rows);

} // namespace
