// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "picture/SvgWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "model/TextLayout.h"
#include "picture/SvgText.h"

namespace qxdraw {

namespace {

constexpr double ArrowLength = 9;
constexpr double ArrowHalfWidth = 3.5;
constexpr double BendRadius = 8;
constexpr std::string_view PathColour = "#c2341d";  // of no edge and no node

struct Colours {
    std::string_view fill;
    std::string_view stroke;
};

/// Light fills with a darker tone of each; the first for nodes of no group.
constexpr std::array<Colours, 10> GroupColours = {{{"#e9f0fa", "#4a6a9c"},
                                                   {"#fdefdf", "#b0702a"},
                                                   {"#e6f4e4", "#4b8747"},
                                                   {"#f9e6ed", "#a54c6d"},
                                                   {"#eeeaf9", "#6a55a3"},
                                                   {"#e0f3f3", "#397f82"},
                                                   {"#faf5d5", "#8c7c24"},
                                                   {"#f2e9e1", "#7f5f45"},
                                                   {"#e8ecef", "#586876"},
                                                   {"#fde7e1", "#ab553f"}}};

const Colours& coloursOf(int group) {
    constexpr int Groups = static_cast<int>(GroupColours.size()) - 1;
    return GroupColours[group == 0 ? 0 : static_cast<std::size_t>(1 + (group - 1) % Groups)];
}

class SvgWriter {
public:
    explicit SvgWriter(const Scene& scene) : m_scene(scene) {}

    std::string write() {
        openPage();
        writeNodes(true);
        writeEdgeLines(false);
        writeArrows(false);
        writeNodes(false);
        if (std::any_of(m_scene.edges.begin(), m_scene.edges.end(),
                        [](const SceneEdge& edge) { return edge.isOverNodes; })) {
            writeEdgeLines(true);
            writeArrows(true);
        }
        writePorts();
        writeNames();
        if (std::any_of(m_scene.labels.begin(), m_scene.labels.end(),
                        [](const SceneLabel& label) { return label.isTitle; })) {
            writeTitles();
        }
        writeLabels();
        writeHiddenLines();
        writeBends();
        m_svg += "</svg>\n";
        return std::move(m_svg);
    }

private:
    /// Page coordinates: y downward, the origin in the upper left corner.
    std::string x(double world) const { return svgNumber(world - m_scene.left); }
    std::string y(double world) const { return svgNumber(m_scene.top - world); }

    /// One command of a path; with a blank, one more point of the last command.
    std::string command(char letter, const DocumentPoint& p) const {
        return std::string(1, letter).append(x(p.x)).append(" ").append(y(p.y));
    }

    void attribute(std::string_view name, std::string_view value) {
        m_svg.append(" ").append(name).append("=\"").append(value).append("\"");
    }

    void openPage() {
        const std::string width = svgNumber(m_scene.width());
        const std::string height = svgNumber(m_scene.height());
        m_svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg";
        attribute("xmlns", "http://www.w3.org/2000/svg");
        attribute("width", width);
        attribute("height", height);
        attribute("viewBox", std::string("0 0 ").append(width).append(" ").append(height));
        attribute("font-family", "DejaVu Sans, Helvetica, Arial, sans-serif");
        m_svg += ">\n";
        if (!m_scene.title.empty()) {
            m_svg.append("<title>").append(escapeXml(m_scene.title)).append("</title>\n");
        }
        m_svg += "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
    }

    /// Many edges make a dark web unless each is lighter.
    bool isDense() const {
        return m_scene.edges.size() > 600 || m_scene.edges.size() > 3 * m_scene.nodes.size();
    }

    std::string_view edgeColour() const { return isDense() ? "#a3b0c0" : "#6b7a8d"; }

    void writeEdgeLines(bool overNodes) {
        m_svg += "<g fill=\"none\" stroke-linecap=\"round\"";
        attribute("stroke", edgeColour());
        attribute("stroke-width", isDense() ? "1" : "1.3");
        m_svg += ">\n";
        for (const SceneEdge& edge : m_scene.edges) {
            if (edge.isOverNodes == overNodes) {
                m_svg += "<path";
                attribute("d", pathOf(edge));
                if (edge.standsFor > 0) {
                    attribute("stroke-width", svgNumber(widthOf(edge)));
                }
                m_svg += "/>\n";
            }
        }
        m_svg += "</g>\n";
    }

    /// Wider for more edges, but no wall for very many.
    static double widthOf(const SceneEdge& edge) {
        constexpr double Widest = 8;
        return std::min(2.2 + std::log2(static_cast<double>(edge.standsFor)), Widest);
    }

    /// Arrow heads stay wider than the lines.
    static double arrowScale(const SceneEdge& edge) {
        constexpr double Share = 0.3;
        return edge.standsFor > 0 ? Share * widthOf(edge) + Share : 1;
    }

    /// The line stops inside its arrow head, whose tip would be blunt otherwise.
    static DocumentPoint shortened(const DocumentPoint& tip, const DocumentPoint& from,
                                   double scale) {
        const double length = std::hypot(tip.x - from.x, tip.y - from.y);
        const double cut = std::min(ArrowLength * scale * 0.8, length / 2);
        return length > 0 ? DocumentPoint{tip.x + (from.x - tip.x) * cut / length,
                                          tip.y + (from.y - tip.y) * cut / length}
                          : tip;
    }

    std::string pathOf(const SceneEdge& edge) const {
        std::vector<DocumentPoint> points = edge.points;
        if (edge.arrowAtSource) {
            points.front() = shortened(points[0], points[1], arrowScale(edge));
        }
        if (edge.arrowAtTarget) {
            points.back() = shortened(points.back(), points[points.size() - 2], arrowScale(edge));
        }
        std::string path = command('M', points.front());
        for (std::size_t i = 1; i + 1 < points.size(); ++i) {
            path += roundedBend(points[i - 1], points[i], points[i + 1]);
        }
        return path + command('L', points.back());
    }

    std::string roundedBend(const DocumentPoint& before, const DocumentPoint& bend,
                            const DocumentPoint& after) const {
        const auto toward = [&](const DocumentPoint& other) {
            const double length = std::hypot(other.x - bend.x, other.y - bend.y);
            const double part = length > 0 ? std::min(BendRadius / length, 0.5) : 0;
            return DocumentPoint{bend.x + (other.x - bend.x) * part,
                                 bend.y + (other.y - bend.y) * part};
        };
        return command('L', toward(before)) + command('Q', bend) + command(' ', toward(after));
    }

    void writeArrows(bool overNodes) {
        m_svg += "<g";
        attribute("fill", edgeColour());
        m_svg += ">\n";
        for (const SceneEdge& edge : m_scene.edges) {
            if (edge.isOverNodes != overNodes) {
                continue;
            }
            if (edge.arrowAtTarget) {
                writeArrow(edge.points.back(), edge.points[edge.points.size() - 2],
                           arrowScale(edge));
            }
            if (edge.arrowAtSource) {
                writeArrow(edge.points[0], edge.points[1], arrowScale(edge));
            }
        }
        m_svg += "</g>\n";
    }

    void writeArrow(const DocumentPoint& tip, const DocumentPoint& from, double scale) {
        const double length = std::hypot(tip.x - from.x, tip.y - from.y);
        if (length <= 0) {
            return;
        }
        const double ux = (tip.x - from.x) / length;
        const double uy = (tip.y - from.y) / length;
        const double back = ArrowLength * scale;
        const double aside = ArrowHalfWidth * (scale > 1 ? 1.4 * scale : 1);
        const DocumentPoint base{tip.x - ux * back, tip.y - uy * back};
        const DocumentPoint left{base.x - uy * aside, base.y + ux * aside};
        const DocumentPoint right{base.x + uy * aside, base.y - ux * aside};
        m_svg += "<path";
        attribute("d", command('M', tip) + command('L', left) + command('L', right) + 'Z');
        m_svg += "/>\n";
    }

    /// Nodes that others lie in, or all the rest. What leads to and fro inside a node is painted
    /// over it.
    void writeNodes(bool containers) {
        m_svg += "<g stroke-width=\"1.4\" stroke-linejoin=\"round\">\n";
        for (const SceneNode& node : m_scene.nodes) {
            if (node.isContainer == containers) {
                if (node.isClosed) {
                    writeSheetsBehind(node);
                }
                writeOutline(node);
                writeDividers(node);
            }
        }
        m_svg += "</g>\n";
    }

    /// A node with a graph in it that is not shown looks like the first of several sheets.
    void writeSheetsBehind(const SceneNode& node) {
        constexpr double Step = 3;
        for (const double by : {2 * Step, Step}) {
            SceneNode sheet = node;
            sheet.center = {node.center.x + by, node.center.y - by};
            for (DocumentPoint& corner : sheet.corners) {
                corner = {corner.x + by, corner.y - by};
            }
            writeOutline(sheet);
        }
    }

    void writeDividers(const SceneNode& node) {
        if (node.dividers.empty()) {
            return;
        }
        std::string path;
        for (const SceneLine& line : node.dividers) {
            path += command('M', line.from) + command('L', line.to);
        }
        m_svg += "<path fill=\"none\" stroke-width=\"1\"";
        attribute("stroke", coloursOf(node.group).stroke);
        attribute("d", path);
        m_svg += "/>\n";
    }

    void writePorts() {
        if (m_scene.ports.empty()) {
            return;
        }
        m_svg += "<g fill=\"#ffffff\" stroke-width=\"1.2\"";
        attribute("stroke", edgeColour());
        m_svg += ">\n";
        for (const ScenePort& port : m_scene.ports) {
            const double dx = port.width / 2;
            const double dy = port.height / 2;
            const DocumentPoint& at = port.center;
            m_svg += "<path";
            attribute("d", command('M', {at.x - dx, at.y - dy}) +
                               command('L', {at.x + dx, at.y - dy}) +
                               command('L', {at.x + dx, at.y + dy}) +
                               command('L', {at.x - dx, at.y + dy}) + 'Z');
            m_svg += "/>\n";
        }
        m_svg += "</g>\n";
    }

    void writeOutline(const SceneNode& node) {
        const Colours& colours = coloursOf(node.group);
        if (node.kind == ShapeKind::Oval) {
            m_svg += "<ellipse";
            attribute("cx", x(node.center.x));
            attribute("cy", y(node.center.y));
            attribute("rx", svgNumber(node.width / 2));
            attribute("ry", svgNumber(node.height / 2));
        } else if (node.kind == ShapeKind::Polygon) {
            std::string points;
            for (const DocumentPoint& corner : node.corners) {
                points += command(' ', corner);
            }
            m_svg += "<polygon";
            attribute("points", std::string_view(points).substr(1));
        } else {
            m_svg += "<rect";
            attribute("x", x(node.center.x - node.width / 2));
            attribute("y", y(node.center.y + node.height / 2));
            attribute("width", svgNumber(node.width));
            attribute("height", svgNumber(node.height));
            attribute("rx", svgNumber(std::min({4.0, node.width / 4, node.height / 4})));
        }
        attribute("fill", colours.fill);
        if (node.isContainer) {
            attribute("fill-opacity", "0.45");
        }
        attribute("stroke", colours.stroke);
        m_svg += "/>\n";
    }

    void writeText(const SceneLabel& label) {
        constexpr double Baseline = 0.35;  // below the middle of a line, in font sizes
        const TextBlock& text = label.text;
        const double step = text.fontSize * LineSpacing;
        double lineMiddle =
            label.center.y + step * (static_cast<double>(text.lines.size()) - 1) / 2;
        for (const std::string& line : text.lines) {
            if (!line.empty()) {
                m_svg += "<text";
                attribute("x", x(label.center.x));
                attribute("y", y(lineMiddle - Baseline * text.fontSize));
                attribute("font-size", svgNumber(text.fontSize));
                m_svg.append(">").append(escapeXml(line)).append("</text>\n");
            }
            lineMiddle -= step;
        }
    }

    void writeNames() {
        m_svg += "<g text-anchor=\"middle\" fill=\"#1d2733\">\n";
        for (const SceneLabel& label : m_scene.labels) {
            if (label.isInNode) {
                writeText(label);
            }
        }
        m_svg += "</g>\n";
    }

    void writeTitles() {
        m_svg +=
            "<g text-anchor=\"middle\" fill=\"#3f4a57\" font-weight=\"bold\" "
            "stroke=\"#ffffff\" stroke-width=\"2.5\" stroke-linejoin=\"round\" "
            "paint-order=\"stroke\">\n";
        for (const SceneLabel& label : m_scene.labels) {
            if (label.isTitle) {
                writeText(label);
            }
        }
        m_svg += "</g>\n";
    }

    void writeLabels() {
        m_svg +=
            "<g text-anchor=\"middle\" fill=\"#3f4a57\" stroke=\"#ffffff\" stroke-width=\"3\" "
            "stroke-linejoin=\"round\" paint-order=\"stroke\">\n";
        for (const SceneLabel& label : m_scene.labels) {
            if (!label.isInNode && !label.isTitle) {
                writeText(label);
            }
        }
        m_svg += "</g>\n";
    }

    void writeHiddenLines() {
        if (m_scene.hiddenLines.empty()) {
            return;
        }
        m_svg += "<g fill=\"none\" stroke-width=\"0.8\" stroke-dasharray=\"4 3\"";
        attribute("stroke", PathColour);
        m_svg += ">\n";
        for (const SceneLine& line : m_scene.hiddenLines) {
            m_svg += "<path";
            attribute("d", command('M', line.from) + command('L', line.to));
            m_svg += "/>\n";
        }
        m_svg += "</g>\n";
    }

    void writeBends() {
        if (m_scene.bends.empty()) {
            return;
        }
        m_svg += "<g stroke-width=\"1\"";
        attribute("stroke", PathColour);
        m_svg += ">\n";
        for (const SceneBend& bend : m_scene.bends) {
            m_svg += "<circle";
            attribute("cx", x(bend.center.x));
            attribute("cy", y(bend.center.y));
            attribute("r", "2.5");
            attribute("fill", bend.isVisible ? PathColour : "#ffffff");
            m_svg += "/>\n";
        }
        m_svg += "</g>\n";
    }

    const Scene& m_scene;
    std::string m_svg;
};

}  // namespace

std::string writeSvg(const Scene& scene) {
    return SvgWriter(scene).write();
}

}  // namespace qxdraw
