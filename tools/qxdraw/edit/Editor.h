// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "edit/Script.h"
#include "model/Arranging.h"
#include "model/Names.h"

namespace qxdraw {

/// Runs commands of a script on a drawing that has been arranged; the document follows where the
/// picture needs it.
class Editor {
public:
    /// Both outlive the editor.
    Editor(Drawing& drawing, GraphDocument& document, const ArrangingOptions& options);

    /// Runs a command. Throws ScriptError, without a line, for one that cannot be done.
    void run(const std::vector<std::string>& words);

    /// A line for each command, and what it does.
    static std::string help();

private:
    using Words = std::vector<std::string>;
    struct Command {
        const char* name;
        const char* usage;
        const char* meaning;
        std::size_t least;  ///< how many words there are at least, the name included
        std::size_t most;
        void (Editor::*act)(const Words& words);
    };
    static const std::vector<Command>& commands();

    void move(const Words& words);
    void resize(const Words& words);
    void shape(const Words& words);
    void bend(const Words& words);
    void connector(const Words& words);
    void label(const Words& words);
    void expand(const Words& words);
    void collapse(const Words& words);
    void hide(const Words& words);
    void unhide(const Words& words);
    void fold(const Words& words);
    void unfold(const Words& words);
    void orthogonal(const Words& words);
    void layout(const Words& words);

    std::size_t nodeCalled(const std::string& name);
    /// Of a word like "a->b", or "a->b#2" for the second of several; -1 when no such edge is named.
    int edgeCalled(const std::string& word);
    std::size_t knownEdge(const std::string& word);
    QxDNode& shownNode(const std::string& name);
    void followVisibility();

    Drawing& m_drawing;
    GraphDocument& m_document;
    ArrangingOptions m_options;
    std::unique_ptr<Names> m_names;  ///< of the nodes that there were when it was made
    std::size_t m_namedNodes = 0;
};

}  // namespace qxdraw
