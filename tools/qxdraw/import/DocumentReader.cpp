// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "import/DocumentReader.h"

#include "import/FormatDetection.h"
#include "import/GmlReader.h"
#include "import/ImportError.h"
#include "import/ImportLimits.h"
#include "import/SourceText.h"
#ifdef QXDRAW_WITH_CGRAPH
#include "import/DotReader.h"
#endif
#ifdef QXDRAW_WITH_XERCES
#include "import/GraphMLReader.h"
#endif

namespace qxdraw {

namespace {

#ifndef QXDRAW_WITH_CGRAPH
GraphDocument readDot(std::string_view) {
    throw ImportError("this qxdraw was built without Graphviz and cannot read DOT");
}
#endif

#ifndef QXDRAW_WITH_XERCES
GraphDocument readGraphML(const std::string&) {
    throw ImportError("this qxdraw was built without Xerces-C and cannot read GraphML");
}
#endif

GraphDocument readAs(DocumentFormat format, const std::string& text) {
    switch (format) {
        case DocumentFormat::Dot:
            return readDot(text);
        case DocumentFormat::GraphML:
            return readGraphML(text);
        case DocumentFormat::Gml:
            return readGml(text);
        case DocumentFormat::Empty:
            throw ImportError("there is nothing in it");
        default:
            throw ImportError("not a format qxdraw reads (it reads DOT, GraphML and GML)");
    }
}

}  // namespace

GraphDocument readDocumentText(const std::string& text, std::string_view path) {
    GraphDocument document = readAs(detectFormat(text, path), text);
    if (document.nodes.size() + document.edges.size() > ImportLimits::Objects) {
        throw ImportError("more than " + std::to_string(ImportLimits::Objects) +
                          " nodes and edges");
    }
    return document;
}

GraphDocument readDocument(const std::string& path) {
    return readDocumentText(readSourceFile(path), path);
}

}  // namespace qxdraw
