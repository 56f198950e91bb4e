// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxBaseEventManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "qx/foundation/util/QxDListIter.h"
#include "qx/foundation/util/QxEvent.h"
#include "qx/foundation/util/QxGroupEventData.h"
#include "qx/foundation/util/QxSingleEventData.h"
#include "qx/foundation/util/QxVetoableChangeListener.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int Red = 0x1;
constexpr int Green = 0x2;
constexpr int Blue = static_cast<int>(0x80000000U);

class Part : public QxObject {
public:
    explicit Part(QxObject* whole = nullptr) : m_whole(whole) {}
    ~Part() override {
        if (onDestroy) {
            onDestroy();
        }
    }
    QxObject* pParentEventSource() const override { return m_whole; }
    void leave() { m_whole = nullptr; }

    std::function<void()> onDestroy;

private:
    QxObject* m_whole;
};

class LeavingData : public QxSingleEventData {
public:
    LeavingData(QxObject* source, QxObject* left) : QxSingleEventData(source), m_left(left) {}
    QxObject* pFormerParentEventSource() const override { return m_left; }

private:
    QxObject* m_left;
};

class ColorEvent : public QxEvent {
public:
    ColorEvent(int type, QxEventData* data, int category = 5)
        : QxEvent(type, data), m_category(category) {}
    std::int32_t eventCategoryID() const override { return m_category; }

protected:
    QxObject* vCloneAttributes() const override { return new ColorEvent(*this); }

private:
    int m_category;
};

using Heard = std::vector<std::string>;

/// Writes down its name and the types it is told; a group in brackets.
class Listener : public QxEventListener {
public:
    Listener(Heard& heard, std::string name) : m_heard(heard), m_name(std::move(name)) {}

    void tell(QxEvent* event) {
        std::string text = m_name;
        if (event->isGroup() != 0) {
            auto* group = static_cast<QxGroupEventData*>(event->pData());
            text += '[';
            for (QxDListIter iter(group->pDataList()); iter; ++iter) {
                text += std::to_string(static_cast<QxEventData*>(iter.pObject())->type());
            }
            text += ']';
        } else {
            text += std::to_string(event->type());
        }
        m_heard.push_back(text);
        if (const auto action = onEvent) {  // a copy: the listener may not survive the call
            action(event);
        }
    }

    std::function<void(QxEvent*)> onEvent;

private:
    Heard& m_heard;
    std::string m_name;
};

class Vetoer : public QxVetoableChangeListener {
public:
    Vetoer(Heard& heard, std::string name) : m_heard(heard), m_name(std::move(name)) {}

    int ask(QxEvent*) {
        m_heard.push_back(m_name + '?');
        if (onAsk) {
            onAsk();
        }
        return answer;
    }

    int answer = 0;
    std::function<void()> onAsk;

private:
    Heard& m_heard;
    std::string m_name;
};

class Manager : public QxBaseEventManager {
public:
    void registerDefaultEventClasses() override {
        registerEventClass(5);
        registerEventClass(6);
    }
    void fireNotification(QxEventListener* listener, QxEvent* event) override {
        static_cast<Listener*>(listener)->tell(event);
    }
    int fireVeto(QxEventListener* listener, QxEvent* event) override {
        return static_cast<Vetoer*>(listener)->ask(event);
    }
};

class EventManager : public testing::Test {
protected:
    int fire(QxObject& source, int type, int category = 5) {
        return manager.fireEvent(new ColorEvent(type, new QxSingleEventData(&source), category), 0);
    }
    int add(QxObject& source, QxEventListener& listener, int mask = -1, int category = 5) {
        return manager.addListener(&source, &listener, mask, category);
    }
    int remove(QxObject& source, QxEventListener& listener, int mask = -1) {
        return manager.removeListener(&source, &listener, mask, 5);
    }
    Heard take() { return std::exchange(heard, {}); }

    Manager manager;
    Heard heard;
    Part whole;
    Part part{&whole};
    Listener a{heard, "a"};
    Listener b{heard, "b"};
    Listener c{heard, "c"};
};

TEST_F(EventManager, TellsOnlyTheTypesAndCategoriesAskedFor) {
    EXPECT_EQ(add(part, a, Red | Blue), 1);
    EXPECT_EQ(add(part, b, Green, 6), 1);
    EXPECT_EQ(fire(part, Red) & fire(part, Green) & fire(part, Blue) & fire(part, Green, 6), 1);
    EXPECT_THAT(heard, ElementsAre("a1", "a" + std::to_string(Blue), "b2"));
}

TEST_F(EventManager, RefusesWhatCannotBeHeard) {
    EXPECT_EQ(manager.addListener(nullptr, &a, -1, 5), 0);
    EXPECT_EQ(manager.addListener(&part, nullptr, -1, 5), 0);
    EXPECT_EQ(add(part, a, 0), 0);
    for (const int category : {-1, 4, 31, 32, 1000}) {
        EXPECT_EQ(add(part, a, -1, category), 0) << category;
        EXPECT_EQ(fire(part, Red, category), 0) << category;
        EXPECT_EQ(manager.hears(category, -1), 0) << category;
    }
    EXPECT_EQ(manager.registerEventClass(32), 0);
    EXPECT_EQ(manager.registerEventClass(31), 1);
    EXPECT_EQ(add(part, a, -1, 31), 1);
    EXPECT_EQ(manager.fireEvent(nullptr, 0), 0);
    EXPECT_EQ(manager.fireEvent(new ColorEvent(Red, nullptr, 31), 0), 1);
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(EventManager, KnowsTheUnionOfTheMasks) {
    EXPECT_EQ(manager.hears(5, -1), 0);
    add(part, a, Red);
    add(whole, a, Red | Green);
    add(part, b, Blue);
    EXPECT_EQ(manager.hears(5, Red) & manager.hears(5, Green) & manager.hears(5, Blue), 1);
    EXPECT_EQ(manager.hears(6, -1), 0);
    remove(whole, a, Green);
    EXPECT_EQ(manager.hears(5, Green), 0);
    EXPECT_EQ(manager.hears(5, Red), 1);
    manager.removeAllListeners(&part, Red, 5);
    EXPECT_EQ(manager.hears(5, Red), 1) << "a still listens at the whole";
    manager.eventSourceDiscarded(&whole);
    EXPECT_EQ(manager.hears(5, Red), 0);
    manager.fireEvents(0);
    EXPECT_EQ(manager.hears(5, Blue), 0);
    EXPECT_EQ(fire(part, Blue), 0);
    manager.fireEvents(1);
    EXPECT_EQ(manager.hears(5, Blue), 1);
    manager.removeAllListeners(&part, -1, 5);
    EXPECT_EQ(manager.hears(5, -1), 0);
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(EventManager, MasksOfOneListenerWidenAndNarrow) {
    add(part, a, Red);
    add(part, a, Green);
    EXPECT_EQ(remove(part, b), 0);
    EXPECT_EQ(remove(whole, a), 0);
    EXPECT_EQ(remove(part, a, Blue), 0);
    EXPECT_EQ(remove(part, a, Red), 1);
    EXPECT_EQ(remove(part, a, Red), 0);
    fire(part, Red);
    fire(part, Green);
    EXPECT_EQ(remove(part, a), 1);
    fire(part, Green);
    EXPECT_THAT(heard, ElementsAre("a2"));
}

TEST_F(EventManager, EventsGoFromTheSourceUpEachListenerOnce) {
    Part top;
    Part middle(&top);
    Part bottom(&middle);
    add(top, b);
    add(bottom, c);
    add(middle, a);
    add(top, a);
    add(middle, b, Green);
    fire(bottom, Red);
    EXPECT_THAT(take(), ElementsAre("c1", "a1", "b1"));
    fire(bottom, Green);
    EXPECT_THAT(take(), ElementsAre("c2", "a2", "b2"));
    fire(top, Red);
    EXPECT_THAT(take(), ElementsAre("b1", "a1"));
}

TEST_F(EventManager, TheFormerWholeHearsWhatHasLeftIt) {
    Part top;
    Part owner(&top);
    Part leaver(&owner);
    add(leaver, a);
    add(top, b);
    leaver.leave();
    manager.fireEvent(new ColorEvent(Red, new LeavingData(&leaver, &owner)), 0);
    EXPECT_THAT(take(), ElementsAre("a1", "b1"));
    fire(leaver, Green);
    EXPECT_THAT(take(), ElementsAre("a2"));
}

TEST_F(EventManager, VetoableListenersAreAskedFirstInTheOrderOfTheirRegistration) {
    Vetoer v{heard, "v"};
    Vetoer w{heard, "w"};
    add(part, a);
    add(whole, v);
    add(part, w);
    EXPECT_EQ(fire(part, Red), 1);
    EXPECT_THAT(take(), ElementsAre("v?", "w?", "a1"));
    v.answer = 7;
    EXPECT_EQ(fire(part, Red), 0);
    EXPECT_THAT(take(), ElementsAre("v?"));
    remove(whole, v);
    w.onAsk = [&] { remove(part, a); };
    EXPECT_EQ(fire(part, Red), 1);
    EXPECT_THAT(take(), ElementsAre("w?"));
}

TEST_F(EventManager, ListenersMayComeAndGoDuringACall) {
    a.onEvent = [&](QxEvent*) {
        remove(part, a);
        remove(part, b);
        add(part, c);
    };
    add(part, a);
    add(part, b);
    fire(part, Red);
    EXPECT_THAT(take(), ElementsAre("a1")) << "b was removed before its turn, c came too late";
    fire(part, Red);
    EXPECT_THAT(take(), ElementsAre("c1"));
    c.onEvent = [&](QxEvent*) { manager.removeAllListeners(&whole, Red, 5); };
    add(whole, b);
    fire(part, Red);
    EXPECT_THAT(take(), ElementsAre("c1"));
    fire(part, Green);
    EXPECT_THAT(take(), ElementsAre("c2", "b2"));
}

TEST_F(EventManager, EventsFiredByAListenerAreToldBeforeItReturns) {
    a.onEvent = [&](QxEvent* event) {
        if (event->type() == Red) {
            fire(whole, Green);
            heard.push_back("a returns");
        }
    };
    add(part, a);
    add(whole, b);
    add(whole, a, Green);
    fire(part, Red);
    EXPECT_THAT(heard, ElementsAre("a1", "b2", "a2", "a returns", "b1"));
}

TEST_F(EventManager, DestroyedListenersAreNotCalled) {
    auto doomed = std::make_unique<Listener>(heard, "d");
    auto suicide = std::make_unique<Listener>(heard, "s");
    Manager other;
    other.addListener(&part, doomed.get(), -1, 5);
    add(part, *doomed, Blue);
    add(part, a);
    add(part, *suicide);
    add(part, *doomed);
    add(whole, *doomed);
    a.onEvent = [&](QxEvent*) { doomed.reset(); };
    suicide->onEvent = [&](QxEvent*) { suicide.reset(); };
    fire(part, Blue);
    fire(part, Red);
    other.fireEvent(new ColorEvent(Red, new QxSingleEventData(&part)), 0);
    EXPECT_THAT(heard, ElementsAre("d" + std::to_string(Blue), "a" + std::to_string(Blue),
                                   "s" + std::to_string(Blue), "a1"));
}

TEST_F(EventManager, ListenersOutliveTheirManager) {
    {
        Manager shortLived;
        shortLived.addListener(&part, &a, -1, 5);
        add(part, a);
        shortLived.addListener(&whole, &a, -1, 5);
    }
    fire(part, Red);
    EXPECT_THAT(heard, ElementsAre("a1"));
}

TEST_F(EventManager, CopiesOfAListenerAreNotRegistered) {
    add(part, a);
    { const Listener copy(a); }
    fire(part, Red);
    EXPECT_THAT(heard, ElementsAre("a1"));
}

TEST_F(EventManager, DiscardingTheSourceInACallKeepsItAliveForTheOthers) {
    auto* source = new Part(&whole);
    source->onDestroy = [&] { heard.push_back("gone"); };
    a.onEvent = [&](QxEvent*) {
        manager.eventSourceDiscarded(source);
        source->vRelease();
    };
    b.onEvent = [&](QxEvent* event) { EXPECT_EQ(event->pData()->pSource(), source); };
    add(*source, a);
    add(*source, c);
    add(whole, b);
    fire(*source, Red);
    EXPECT_THAT(heard, ElementsAre("a1", "c1", "b1", "gone"));
    EXPECT_EQ(manager.hears(5, -1), 1);
    remove(whole, b);
    EXPECT_EQ(manager.hears(5, -1), 0);
}

class EventBatch : public EventManager {
protected:
    EventBatch() { manager.coalesce(1); }
};

TEST_F(EventBatch, TellsOneGroupPerListenerAndCategoryAtTheEnd) {
    add(part, b, Red | Green);
    add(whole, a, Green);
    add(part, c, -1, 6);
    EXPECT_EQ(manager.openBatch(), 1);
    EXPECT_EQ(manager.isCollecting(), 1);
    EXPECT_EQ(fire(part, Green, 6), 1);
    fire(part, Red);
    fire(part, Green);
    fire(part, Red, 6);
    fire(part, Red);
    EXPECT_EQ(manager.openBatch(), 2);
    fire(whole, Green);
    EXPECT_EQ(manager.closeBatch(), 1);
    EXPECT_THAT(take(), IsEmpty());
    EXPECT_EQ(manager.closeBatch(), 0);
    EXPECT_THAT(take(), ElementsAre("b[121]", "a[22]", "c[21]"));
    EXPECT_EQ(manager.closeBatch(), 0);
    fire(part, Red);
    EXPECT_THAT(take(), ElementsAre("b1"));
}

TEST_F(EventBatch, MayPreserveTheOrderAcrossCategories) {
    manager.coalescingPreservesOrder(1);
    add(part, b);
    add(part, c, -1, 6);
    manager.openBatch();
    fire(part, Green, 6);
    fire(part, Red);
    fire(part, Green);
    fire(part, Red, 6);
    manager.closeBatch();
    EXPECT_THAT(heard, ElementsAre("c[2]", "b[12]", "c[1]"));
}

TEST_F(EventBatch, CollectsOnlyWhileCoalescingIsOn) {
    add(part, a);
    manager.openBatch();
    fire(part, Red);
    manager.coalescingDisabled(1);
    EXPECT_THAT(take(), ElementsAre("a[1]")) << "what waited comes before what follows";
    fire(part, Green);
    EXPECT_THAT(take(), ElementsAre("a2"));
    manager.coalescingDisabled(0);
    fire(part, Red);
    EXPECT_THAT(take(), IsEmpty());
    manager.coalesce(0);
    EXPECT_THAT(take(), ElementsAre("a[1]"));
    fire(part, Red);
    manager.closeBatch();
    EXPECT_THAT(take(), ElementsAre("a1"));
}

TEST_F(EventBatch, VetoableListenersAreAskedAtOnce) {
    Vetoer v{heard, "v"};
    add(part, v);
    add(part, a);
    manager.openBatch();
    EXPECT_EQ(fire(part, Red), 1);
    v.answer = 1;
    EXPECT_EQ(fire(part, Green), 0);
    EXPECT_THAT(take(), ElementsAre("v?", "v?"));
    manager.closeBatch();
    EXPECT_THAT(take(), ElementsAre("a[1]"));
}

TEST_F(EventBatch, DiscardedSourcesLiveUntilTheirEventsAreTold) {
    auto* source = new Part(&whole);
    source->onDestroy = [&] { heard.push_back("gone"); };
    auto doomed = std::make_unique<Listener>(heard, "d");
    add(*source, a);
    add(*source, *doomed);
    add(whole, b);
    manager.openBatch();
    fire(*source, Red);
    manager.eventSourceDiscarded(source);
    source->vRelease();
    doomed.reset();
    fire(whole, Green);
    EXPECT_THAT(take(), IsEmpty());
    manager.closeBatch();
    EXPECT_THAT(take(), ElementsAre("a[1]", "b[12]", "gone"));
}

TEST_F(EventBatch, EventsAboutADyingObjectAreToldAtOnceAfterWhatWaits) {
    auto* source = new Part(&whole);
    source->onDestroy = [this, source] { fire(*source, Green); };
    add(whole, a);
    manager.openBatch();
    fire(part, Red);
    source->vRelease();
    EXPECT_THAT(take(), ElementsAre("a[1]", "a2"));
    manager.closeBatch();
    EXPECT_THAT(take(), IsEmpty());
}

TEST_F(EventBatch, ListenersThatLeaveMissWhatWaits) {
    auto doomed = std::make_unique<Listener>(heard, "d");
    add(part, a);
    add(part, *doomed);
    add(part, b);
    add(part, c);
    a.onEvent = [&](QxEvent*) { doomed.reset(); };
    manager.openBatch();
    fire(part, Red);
    fire(part, Green);
    remove(part, b);
    remove(part, c, Red);
    add(part, b);
    manager.closeBatch();
    EXPECT_THAT(heard, ElementsAre("a[12]", "c[2]"));
}

TEST_F(EventBatch, ListenersRemovedAfterTheDiscardOfTheSourceMissWhatWaits) {
    auto* source = new Part(&whole);
    add(*source, a);
    add(*source, b, Red);
    add(*source, c, Red, 6);
    manager.openBatch();
    fire(*source, Red);
    fire(*source, Red, 6);
    fire(*source, Green);
    manager.eventSourceDiscarded(source);
    EXPECT_EQ(remove(*source, a, Green), 1);
    EXPECT_EQ(remove(*source, a, Green), 0);
    EXPECT_EQ(remove(*source, b, Blue), 0);
    EXPECT_EQ(manager.removeAllListeners(source, -1, 6), 1);
    EXPECT_EQ(manager.removeAllListeners(source, -1, 6), 0);
    source->vRelease();
    manager.closeBatch();
    EXPECT_THAT(heard, ElementsAre("a[1]", "b[1]"));
}

TEST_F(EventBatch, ListenersMayOpenBatchesWhileOneIsTold) {
    add(part, a, Red);
    add(part, b, Red | Green);
    a.onEvent = [&](QxEvent*) {
        manager.openBatch();
        fire(part, Green);
        fire(part, Green);
        manager.closeBatch();
    };
    manager.openBatch();
    fire(part, Red);
    manager.closeBatch();
    EXPECT_THAT(heard, ElementsAre("a[1]", "b[22]", "b[1]"));
}

TEST_F(EventBatch, TheManagerForgetsAnOpenBatch) {
    auto* source = new Part;
    source->onDestroy = [&] { heard.push_back("gone"); };
    auto shortLived = std::make_unique<Manager>();
    shortLived->coalesce(1);
    shortLived->addListener(source, &a, -1, 5);
    shortLived->openBatch();
    shortLived->fireEvent(new ColorEvent(Red, new QxSingleEventData(source)), 0);
    shortLived->eventSourceDiscarded(source);
    source->vRelease();
    EXPECT_THAT(heard, IsEmpty());
    shortLived.reset();
    EXPECT_THAT(heard, ElementsAre("gone"));
}

TEST(EventGroup, CopiesOfAGroupHaveTheirOwnMembers) {
    Part source;
    QxGroupEventData group;
    auto* member = new QxSingleEventData(&source);
    member->type(Red);
    group.appendData(member);
    group.appendData(nullptr);
    member->vRelease();
    const std::unique_ptr<QxGroupEventData> deep(group.cloneObject());
    const std::unique_ptr<QxGroupEventData> attributes(group.cloneAttributes());
    group = *deep;
    group.copyObject(&group);
    ASSERT_EQ(deep->pDataList()->count(), 1);
    ASSERT_EQ(group.pDataList()->count(), 1);
    EXPECT_EQ(attributes->pDataList()->count(), 0);
    auto* copy = static_cast<QxEventData*>(deep->pDataList()->pFirstObject());
    EXPECT_NE(copy, group.pDataList()->pFirstObject());
    EXPECT_EQ(copy->pSource(), &source);
    EXPECT_EQ(copy->type(), Red);
}

/// Random registrations at a chain of objects, compared with a plain set of all of them.
TEST_F(EventManager, RandomRegistrationsAgreeWithAPlainSet) {
    constexpr int Objects = 4;
    constexpr int Listeners = 5;
    constexpr int Bits = 3;
    const unsigned seed = 20260101;
    std::mt19937 random(seed);
    const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };

    std::vector<std::unique_ptr<Part>> chain;
    for (int i = 0; i < Objects; ++i) {
        chain.push_back(std::make_unique<Part>(i == 0 ? nullptr : chain.back().get()));
    }
    std::vector<std::unique_ptr<Listener>> listeners(Listeners);
    std::set<std::array<int, 3>> model;  // object, listener, bit
    const auto forget = [&](const auto& isMeant) { std::erase_if(model, isMeant); };

    for (int step = 0; step < 5000; ++step) {
        const int object = below(Objects);
        const int index = below(Listeners);
        const int mask = 1 + below((1 << Bits) - 1);
        auto& listener = listeners[static_cast<std::size_t>(index)];
        Part& source = *chain[static_cast<std::size_t>(object)];
        const auto isInMask = [&](const auto& m) { return (mask >> m[2] & 1) != 0; };
        if (listener == nullptr) {
            listener = std::make_unique<Listener>(heard, std::to_string(index) + ':');
        }
        switch (below(8)) {
            case 0:
                listener.reset();
                forget([&](const auto& m) { return m[1] == index; });
                break;
            case 1:
                manager.eventSourceDiscarded(&source);
                forget([&](const auto& m) { return m[0] == object; });
                break;
            case 2:
                manager.removeAllListeners(&source, mask, 5);
                forget([&](const auto& m) { return m[0] == object && isInMask(m); });
                break;
            case 3:
                remove(source, *listener, mask);
                forget(
                    [&](const auto& m) { return m[0] == object && m[1] == index && isInMask(m); });
                break;
            default:
                add(source, *listener, mask);
                for (int bit = 0; bit < Bits; ++bit) {
                    if ((mask >> bit & 1) != 0) {
                        model.insert({object, index, bit});
                    }
                }
        }
        const int bit = below(Bits);
        std::multiset<std::string> expected;
        int union_ = 0;
        for (const auto& m : model) {
            union_ |= 1 << m[2];
            const std::string text = std::to_string(m[1]) + ':' + std::to_string(1 << bit);
            if (m[0] <= object && m[2] == bit && expected.count(text) == 0) {
                expected.insert(text);
            }
        }
        fire(source, 1 << bit);
        const Heard told = take();
        ASSERT_EQ(std::multiset<std::string>(told.begin(), told.end()), expected)
            << "seed " << seed << ", step " << step;
        for (int i = 0; i < Bits; ++i) {
            ASSERT_EQ(manager.hears(5, 1 << i), union_ >> i & 1) << "seed " << seed << ", " << step;
        }
    }
}

}  // namespace
