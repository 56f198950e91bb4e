// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "qx/events/QxDEventManager.h"
#include "qx/events/QxDrawingChangeListener.h"
#include "qx/events/internal/FireDrawingChange.h"

namespace {

class Factory : public QxAFactory {
public:
    QxDEventManager& eventManager() { return static_cast<QxDEventManager&>(*pEventManager()); }

protected:
    QxGraphManager* vNewGraphManager(QxOwnedObject*, int) override { return nullptr; }
    QxGraph* vNewGraph(QxOwnedObject*, int) override { return nullptr; }
    QxNode* vNewNode(QxOwnedObject*, int) override { return nullptr; }
    QxEdge* vNewEdge(QxOwnedObject*, int) override { return nullptr; }
    QxGraph* vNewIntergraph(QxOwnedObject*, int) override { return nullptr; }
    QxEventManager* vNewEventManager() override { return new QxDEventManager; }
};

class Thing : public QxGraphObject {
public:
    explicit Thing(QxOwnedObject* owner) : QxGraphObject(owner) { ownerValid(1); }
};

class Counter : public QxDrawingChangeListener {
public:
    using QxDrawingChangeListener::drawingChanged;
    void drawingChanged(QxDrawingChangeEventData*) override { ++count; }
    std::int64_t count = 0;
};

/// A factory and a chain of objects below it, each owned by the one before.
struct Chain {
    explicit Chain(std::int64_t depth) {
        QxOwnedObject* owner = &factory;
        for (std::int64_t i = 0; i < depth; ++i) {
            things.push_back(std::make_unique<Thing>(owner));
            owner = things.back().get();
        }
    }
    void fireMove() {
        Thing& source = *things.back();
        qx::internal::fireDrawingChange(source, NodeMoved, [&] {
            return new QxDrawingChangeEventData(&source, &bounds, &bounds);
        });
    }

    Factory factory;
    std::vector<std::unique_ptr<Thing>> things;
    QxRect bounds{0, 0, 10, 10};
};

/// A node in a graph in a manager moves; nobody listens, or only for another type.
void eventNobodyHears(benchmark::State& state) {
    Chain chain(3);
    Counter counter;
    if (state.range(0) != 0) {
        chain.factory.eventManager().addDrawingChangeListener(&chain.factory, &counter,
                                                              NodeResized);
    }
    for (auto _ : state) {
        chain.fireMove();
        benchmark::ClobberMemory();
    }
}
BENCHMARK(eventNobodyHears)->Arg(0)->Arg(1);

/// One listener at the factory, the source `depth` objects below.
void eventHeardFromDepth(benchmark::State& state) {
    Chain chain(state.range(0));
    Counter counter;
    chain.factory.eventManager().addDrawingChangeListener(&chain.factory, &counter);
    for (auto _ : state) {
        chain.fireMove();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(eventHeardFromDepth)->RangeMultiplier(4)->Range(1, 256)->Complexity();

/// Collected events, told as one group.
void eventBatch(benchmark::State& state) {
    Chain chain(3);
    Counter counter;
    QxDEventManager& manager = chain.factory.eventManager();
    manager.addDrawingChangeListener(&chain.factory, &counter);
    manager.coalesce(1);
    for (auto _ : state) {
        manager.openBatch();
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            chain.fireMove();
        }
        manager.closeBatch();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(eventBatch)->RangeMultiplier(10)->Range(10, 100000)->Complexity();

/// One listener registers with n objects, which are then discarded, and goes.
void listenerOfManyObjects(benchmark::State& state) {
    std::vector<std::unique_ptr<Thing>> things;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        things.push_back(std::make_unique<Thing>(nullptr));
    }
    QxDEventManager manager;
    for (auto _ : state) {
        Counter counter;
        for (const auto& thing : things) {
            manager.addDrawingChangeListener(thing.get(), &counter);
        }
        for (std::size_t i = 0; i < things.size(); i += 2) {
            manager.eventSourceDiscarded(things[i].get());
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(listenerOfManyObjects)->RangeMultiplier(10)->Range(1000, 100000)->Complexity();

}  // namespace
