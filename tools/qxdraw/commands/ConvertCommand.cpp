// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/ConvertCommand.h"

#include <iostream>

#include "commands/Messages.h"
#include "commands/OpenDrawing.h"
#include "commands/Progress.h"
#include "import/ImportError.h"
#include "import/SourceText.h"
#include "picture/PictureError.h"
#include "qx/xml/QxDGraphManagerXMLReader.h"
#include "qx/xml/QxDGraphManagerXMLWriter.h"

namespace qxdraw {

namespace {

void write(const QxDGraphManager& manager, const std::string& path) {
    QxDGraphManagerXMLWriter writer(path.c_str());
    if (writer.write(&manager) == 0) {
        throw PictureError(writer.messages().back().text);
    }
}

void convertDocument(const ConvertOptions& options) {
    QxFactory factory;
    struct Release {
        void operator()(QxDGraphManager* one) const { one->vRelease(); }
    };
    const std::unique_ptr<QxDGraphManager, Release> manager(factory.newDGraphManager());
    QxDGraphManagerXMLReader reader(options.input.c_str());
    const bool isRead = reader.read(manager.get()) != 0;
    for (const QxXMLMessage& message : reader.messages()) {
        if (!isRead) {
            throw ImportError(message.text, message.line);
        }
        if (!options.quiet) {
            tell(options.input, message.line, "warning: " + message.text);
        }
    }
    write(*manager, options.output);
}

void convertGraphFile(const ConvertOptions& options) {
    GraphDocument document = openDocument(options.input, options.quiet);
    Progress progress(options.quiet);
    const auto drawing = arrange(document, options.arranging, progress);
    progress.clear();
    for (std::size_t i = 0; i < drawing->numberOfNodes(); ++i) {
        drawing->node(i).nameString(QxText::decodeUtf8(document.nodes[i].id).c_str());
    }
    write(drawing->manager(), options.output);
}

}  // namespace

bool isDocumentName(const std::string& path) {
    return toLowerAscii(path).ends_with(".qxd");
}

void runConvert(const ConvertOptions& options) {
    (isDocumentName(options.input) ? convertDocument : convertGraphFile)(options);
    if (!options.quiet) {
        std::cout << "wrote " << options.output << '\n';
    }
}

}  // namespace qxdraw
