// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "commands/OpenDrawing.h"

#include "commands/Messages.h"
#include "import/DocumentReader.h"

namespace qxdraw {

GraphDocument openDocument(const std::string& input, bool quiet) {
    GraphDocument document = readDocument(input);
    if (!quiet) {
        tellWarnings(input, document);
    }
    return document;
}

std::unique_ptr<Drawing> arrange(GraphDocument& document, const ArrangingOptions& options,
                                 Progress& progress) {
    return arrange(document, options,
                   [&progress](double part) { progress.report("laying out", part); });
}

}  // namespace qxdraw
