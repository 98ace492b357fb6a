/// @file
/// The inputs of the workloads with documents.
#pragma once

#include <cstddef>
#include <string>

#include "workload.h"

namespace bench {

/// The configuration of a system of amplifiers, of 20 MB unless divided: 18 elements a device
/// with 4.1 attributes each.
class configuration_t {
public:
    configuration_t() : devices(sized(16861)) {
        for (std::size_t i = 0; i < devices; ++i) {
            device_add(std::to_string(i));
        }
        text += "</system>\n";
    }

    std::size_t elements() const { return 1 + 18 * devices; }
    std::size_t bands() const { return 12 * devices; }

    std::string text = "<?xml version=\"1.0\"?>\n<system version=\"4\">\n";

private:
    void device_add(const std::string& number) {
        text += "  <device id=\"" + number + "\" name=\"amplifier " + number +
                "\" model=\"A4\" address=\"10.0.0." + number + "\" enabled=\"true\">\n" +
                "    <note lang=\"en\">in rack " + number + " &amp; its neighbour</note>\n";
        for (const char* const channel : {"1", "2", "3", "4"}) {
            channel_add(channel);
        }
        text += "  </device>\n";
    }

    void channel_add(const std::string& number) {
        text += "    <channel id=\"" + number + "\" name=\"output " + number +
                "\" gain=\"-3.5\" mute=\"false\" delay=\"0.25\">\n";
        for (const char* const band : {"1", "4", "7"}) {
            text += std::string("      <band type=\"peak\" frequency=\"") + band +
                    "000\" gain=\"" + band + "\" q=\"0.71\"/>\n";
        }
        text += "    </channel>\n";
    }

    std::size_t devices;
};

/// A document with as many `b` in an `a`, all of them with numbers from 0 as `id`.
inline std::string numbered(std::size_t count) {
    std::string text = "<r><a>";
    for (std::size_t i = 0; i < count; ++i) {
        text.append("<b id=\"").append(std::to_string(i)).append("\" value=\"v\"/>");
    }
    return text + "</a></r>";
}

/// A document with 10 items, numbered and with values.
constexpr const char* ten_items = "<r>"
                                  "<item id=\"0\" value=\"10\"/><item id=\"1\" value=\"11\"/>"
                                  "<item id=\"2\" value=\"12\"/><item id=\"3\" value=\"13\"/>"
                                  "<item id=\"4\" value=\"14\"/><item id=\"5\" value=\"15\"/>"
                                  "<item id=\"6\" value=\"16\"/><item id=\"7\" value=\"17\"/>"
                                  "<item id=\"8\" value=\"18\"/><item id=\"9\" value=\"19\"/>"
                                  "</r>";

/// The number of look-ups in one iteration.
constexpr std::size_t lookups = 1000;

} // namespace bench
