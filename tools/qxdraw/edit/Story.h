// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "model/Drawing.h"
#include "qx/events/QxComplexityChangeListener.h"
#include "qx/events/QxDrawingChangeListener.h"

namespace qxdraw {

/// Listens to a drawing, and tells in words what has changed.
class Story {
public:
    /// Both outlive the story.
    Story(const Drawing& drawing, const GraphDocument& document);
    ~Story();
    Story(const Story&) = delete;
    Story& operator=(const Story&) = delete;

    /// What was heard since the last time, in short; "nothing changed" when there was nothing.
    std::string take();

private:
    class Changes : public QxDrawingChangeListener {
    public:
        explicit Changes(Story& story) : m_story(story) {}
        using QxDrawingChangeListener::drawingChanged;
        void drawingChanged(QxDrawingChangeEventData* data) override { m_story.hear(*data); }

    private:
        Story& m_story;
    };
    class Complexity : public QxComplexityChangeListener {
    public:
        explicit Complexity(Story& story) : m_story(story) {}
        using QxComplexityChangeListener::complexityChanged;
        void complexityChanged(QxComplexityChangeEventData* data) override { m_story.hear(*data); }

    private:
        Story& m_story;
    };
    /// How often an edge was told of.
    struct PathChange {
        int added = 0;
        int removed = 0;
        int moved = 0;
    };

    void hear(const QxDrawingChangeEventData& data);
    void hear(const QxComplexityChangeEventData& data);
    std::string nameOf(const QxGraphMember& member) const;
    /// Sums up many changes of a kind; few are told one by one.
    void note(const std::string& kind, const std::string& what);

    const Drawing& m_drawing;
    const GraphDocument& m_document;
    Changes m_changes{*this};
    Complexity m_complexity{*this};
    /// By kind, in the order in which they were heard first.
    std::vector<std::string> m_kinds;
    std::map<std::string, std::map<std::string, std::string>> m_notes;
    std::map<std::string, PathChange> m_paths;
    std::set<const QxObject*> m_labels;
    std::string m_bounds;
};

}  // namespace qxdraw
