// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Labels that are divided into fields: how they are read, and where the fields lie in a node.

#include <gtest/gtest.h>

#include <random>

#include "import/HtmlLabels.h"
#include "import/RecordLabels.h"
#include "model/FieldLayout.h"

namespace qxdraw {
namespace {

/// Fields side by side as (a|b), under each other as [a|b], a port before its text as <p>.
std::string described(const DocumentField& field) {
    std::string text = field.port.empty() ? "" : "<" + field.port + ">";
    if (field.parts.empty()) {
        return text + field.text;
    }
    for (const DocumentField& part : field.parts) {
        text +=
            (&part == &field.parts.front() ? (field.isStacked ? "[" : "(") : "|") + described(part);
    }
    return text + (field.isStacked ? "]" : ")");
}

std::string described(const std::optional<DocumentField>& field) {
    return field ? described(*field) : "none";
}

TEST(LabelFields, AreThoseOfTheRecordOrTheLabelIsNone) {
    const std::pair<const char*, const char*> records[] = {
        {"", "()"},
        {"a", "(a)"},
        {"<f0> left|<f1> mid  dle |right", "(<f0>left|<f1>mid dle|right)"},
        {"a|{b|{c|<x>d}|e}|f", "(a|[b|(c|<x>d)|e]|f)"},
        {"<p>{a|b}|<q>", "(<p>[a|b]|<q>)"},
        {R"(a\|\{b\}\<\>|\N\n\ c)", R"((a|{b}<>|\N\n\ c))"},
        {R"(ends\)", "(ends)"},
        {"{a|b", "none"},
        {"a}|b", "none"},
        {"a{b}", "none"},
        {"{a}b", "none"},
        {"{a}{b}", "none"},
        {"<p|a", "none"},
        {"<p><q>a", "none"},
        {"a>b", "none"},
    };
    for (const auto& [label, expected] : records) {
        EXPECT_EQ(described(parseRecordLabel(label, false)), expected) << label;
    }
    EXPECT_EQ(described(parseRecordLabel("a|{b|c}", true)), "[a|(b|c)]");
    EXPECT_EQ(described(parseRecordLabel(std::string(100000, '{'), false)), "none");
}

TEST(LabelFields, AreTheCellsOfAnHtmlTable) {
    const std::pair<std::string, const char*> labels[] = {
        {"<table><tr><td>a</td><td PORT='p'> b<br/>c </td></tr><tr><td>d &amp; e</td></tr></table>",
         "[(a|<p>b\nc)|(d & e)]"},
        {" <TABLE port=\"all\" title='a>b'>\n<TR><TD/><TD><B>x</B></TD></TR></TABLE>\n",
         "<all>[(|x)]"},
        {"<table><tr><td port='o'><table><tr><td>in</td></tr></table></td></tr></table>",
         "[(<o>[(in)])]"},
        {"plain <b>text</b>", "none"},
        {"<table></table>", "none"},
        {"<table><tr><td>a</tr></table>", "none"},
        {"<table><td>a</td></table>", "none"},
        {"text<table><tr><td>a</td></tr></table>", "none"},
        {"<table><tr><td>a", "none"},
        {"</table>", "none"},
        {"<table><tr><td>a</td></tr></table><table><tr><td>b</td></tr></table>", "none"},
        {"<table port='", "none"},
    };
    for (const auto& [label, expected] : labels) {
        EXPECT_EQ(described(parseHtmlTable(label)), expected) << label;
    }
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<table><tr><td>";
    }
    EXPECT_EQ(described(parseHtmlTable(deep)), "none");
}

std::size_t leavesOf(const DocumentField& field) {
    std::size_t leaves = field.parts.empty() ? 1 : 0;
    for (const DocumentField& part : field.parts) {
        leaves += leavesOf(part);
    }
    return leaves;
}

/// Fields without parts cover their node, each bar separates two of them.
TEST(LabelFields, CoverTheirNodeWhateverTheLabel) {
    std::mt19937 random(8);
    int records = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string label;
        std::size_t bars = 0;
        for (std::size_t length = random() % 12; label.size() < length;) {
            label += std::string_view("{}{}||||<>\\ ab")[random() % 14];
        }
        for (std::size_t at = 0; at < label.size(); ++at) {
            const bool isEscape = label[at] == '\\';
            bars += label[at] == '|' ? 1 : 0;
            at += isEscape ? 1 : 0;
        }
        const auto record = parseRecordLabel(label, random() % 2 == 0);
        parseHtmlTable(label);
        if (!record) {
            continue;
        }
        ++records;
        EXPECT_EQ(leavesOf(*record), bars + 1) << label;
        DocumentNode node;
        node.fields = std::make_shared<const DocumentField>(*record);
        node.width = 1.0 + static_cast<double>(random() % 200);
        node.height = 1.0 + static_cast<double>(random() % 200);
        double area = 0;
        for (const PlacedField& field : placeFields(node)) {
            EXPECT_TRUE(field.left <= field.right && field.bottom <= field.top) << label;
            area += field.field->parts.empty()
                        ? (field.right - field.left) * (field.top - field.bottom)
                        : 0;
        }
        EXPECT_NEAR(area, node.width * node.height, 1e-6 * area) << label;
    }
    EXPECT_GT(records, 2000);
}

}  // namespace
}  // namespace qxdraw
