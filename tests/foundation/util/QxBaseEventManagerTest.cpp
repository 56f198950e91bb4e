// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxBaseEventManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <sstream>
#include <utility>

#include "foundation/util/UtilTestObjects.h"
#include "qx/foundation/util/QxEvent.h"
#include "qx/foundation/util/QxGroupEventData.h"
#include "qx/foundation/util/QxSingleEventData.h"
#include "qx/foundation/util/QxVetoableChangeListener.h"
#include "support/TestRandom.h"

namespace {

using testing::ElementsAre;

class Part : public QxObject {
public:
    explicit Part(Part* parent = nullptr, int number = 0) : whole(parent), id(number) { ++alive; }
    ~Part() override {
        --alive;
        onDestroy();
    }
    QxObject* pParentEventSource() const override { return whole; }

    Part* whole;
    int id;
    std::function<void()> onDestroy = [] {};
    static inline int alive = 0;
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
    ColorEvent(int type, QxEventData* data, int category)
        : QxEvent(type, data), m_category(category) {}
    std::int32_t eventCategoryID() const override { return m_category; }

protected:
    QxObject* vCloneAttributes() const override { return new ColorEvent(*this); }

private:
    int m_category;
};

/// Hears a text for each event, its category, its type, and the type and source of what it tells
/// of, which is more than one thing in a group. What it answers counts as veto.
struct Ear {
    std::function<int(const std::string&)> hear;
};
struct Listener : QxEventListener, Ear {};
struct Vetoer : QxVetoableChangeListener, Ear {};

int call(QxEventListener* listener, const std::string& text) {
    const auto hear = dynamic_cast<Ear&>(*listener).hear;  // the ear may not survive the call
    return hear(text);
}
std::string head(int category, int type, bool isGroup) {
    return (isGroup ? "group " : "") + std::to_string(category) + '/' + std::to_string(type) + ':';
}
std::string member(int type, const QxObject* source) {
    return ' ' + std::to_string(type) + '@' + std::to_string(static_cast<const Part*>(source)->id);
}

class Manager : public QxBaseEventManager {
public:
    void registerDefaultEventClasses() override {
        registerEventClass(6);
        registerEventClass(7);
    }
    void fireNotification(QxEventListener* listener, QxEvent* event) override {
        fireVeto(listener, event);
    }
    int fireVeto(QxEventListener* listener, QxEvent* event) override {
        const auto textOf = [](const QxObject* object) {
            const auto* data = static_cast<const QxEventData*>(object);
            return member(data->type(), data->pSource());
        };
        std::string text = head(event->eventCategoryID(), event->type(), event->isGroup() != 0);
        if (event->isGroup() == 0) {
            return call(listener, text + textOf(event->pData()));
        }
        for (QxDListIter it(static_cast<QxGroupEventData*>(event->pData())->pDataList()); it;
             ++it) {
            text += textOf(it.pObject());
        }
        return call(listener, text);
    }
    int fire(Part* source, int type, int category, Part* left) {
        return fireEvent(new ColorEvent(type, new LeavingData(source, left), category), 0);
    }
    int turn(int which, int on) {
        return which == 0   ? fireEvents(on)
               : which == 1 ? coalesce(on)
               : which == 2 ? coalescingDisabled(on)
                            : coalescingPreservesOrder(on);
    }
    void listenerDestroyed(QxEventListener*) {}
};

/// Tells from one plain table who is told what, when.
class NaiveManager {
public:
    int addListener(const Part* at, QxEventListener* who, int mask, int category) {
        if (at == nullptr || who == nullptr || mask == 0 || category / 2 != 3) {
            return 0;
        }
        const auto found = std::ranges::find_if(m_registrations, [=](const Registration& r) {
            return r.at == at && r.who == who && r.category == category;
        });
        if (found == m_registrations.end()) {
            m_registrations.push_back({at, who, category, mask});
        } else {
            found->mask |= mask;
        }
        return 1;
    }
    int removeListener(const Part* at, const QxEventListener* who, int mask, int category) {
        return who != nullptr ? remove(at, who, mask, category) : 0;
    }
    int removeAllListeners(const Part* at, int mask, int category) {
        return remove(at, nullptr, mask, category);
    }
    int remove(const Part* at, const QxEventListener* who, int mask, int category) {
        return forget(mask, [=](const auto& r) {
            return r.at == at && (who == nullptr || r.who == who) && r.category == category;
        });
    }
    void listenerDestroyed(const QxEventListener* who) {
        forget(-1, [=](const auto& r) { return r.who == who; });
    }
    void eventSourceDiscarded(const Part* at) {
        std::erase_if(m_registrations, [=](const Registration& r) { return r.at == at; });
    }

    int fire(const Part* source, int type, int category, const Part* left) {
        if (m_switches[0] == 0 || category / 2 != 3) {
            return 0;
        }
        std::map<std::size_t, Call*> asked;
        std::vector<Call*> plain;
        std::vector<const QxEventListener*> found;
        for (const Part* const start : {source, left}) {
            for (const Part* at = start; at != nullptr; at = at->whole) {
                for (std::size_t i = 0; i < m_registrations.size(); ++i) {
                    const Registration& r = m_registrations[i];
                    if (r.at == at && r.category == category && (r.mask & type) != 0 &&
                        std::ranges::find(found, r.who) == found.end()) {
                        found.push_back(r.who);
                        m_calls.push_back({{at, r.who, category, type}, source});
                        r.who->isVetoableListener() != 0 ? asked[i] = &m_calls.back()
                                                         : plain.emplace_back(&m_calls.back());
                    }
                }
            }
        }
        ++m_telling;
        const bool vetoed =
            std::ranges::any_of(asked, [&](const auto& each) { return tell({each.second}) != 0; });
        const bool waits = isCollecting() != 0;
        for (Call* const each : plain) {
            if (vetoed) {
                each->mask = 0;
            } else if (waits) {
                m_waiting.push_back(each);
            } else {
                tell({each});
            }
        }
        for (const auto& [order, each] : asked) {
            each->mask = 0;
        }
        --m_telling;
        return vetoed ? 0 : 1;
    }

    int turn(int which, int on) {
        m_switches[which] = on != 0 ? 1 : 0;
        tellWaiting();
        return m_switches[which];
    }
    int openBatch() { return ++m_depth; }
    int closeBatch() {
        m_depth = std::max(m_depth - 1, 0);
        tellWaiting();
        return m_depth;
    }
    int isCollecting() const {
        return m_depth > 0 && m_switches[1] != 0 && m_switches[2] == 0 ? 1 : 0;
    }
    int isTelling() const { return m_telling > 0 ? 1 : 0; }
    int hears(int category, int type) const {
        const auto asks = [&](const auto& r) {
            return r.category == category && (r.mask & type) != 0;
        };
        return m_switches[0] != 0 && std::ranges::any_of(m_registrations, asks) ? 1 : 0;
    }

private:
    struct Registration {
        const Part* at;
        QxEventListener* who;
        int category, mask;
    };
    /// What a listener is to be told; the mask is the type, 0 once it has been told or has left.
    struct Call : Registration {
        const Part* source;
    };

    template <class IsMeant>
    int forget(int mask, const IsMeant& isMeant) {
        int changed = 0;
        const auto narrow = [&](Registration& r) {
            if (isMeant(r) && (r.mask & mask) != 0) {
                r.mask &= ~mask;
                changed = 1;
            }
        };
        std::ranges::for_each(m_registrations, narrow);
        std::ranges::for_each(m_calls, narrow);
        std::erase_if(m_registrations, [](const Registration& r) { return r.mask == 0; });
        return changed;
    }
    int tell(const std::vector<Call*>& calls, bool isGroup = false) {
        std::string members;
        int types = 0;
        for (Call* const each : calls) {
            types |= each->mask;
            members += each->mask != 0 ? member(each->mask, each->source) : "";
            each->mask = 0;
        }
        const std::string text = head(calls[0]->category, types, isGroup) + members;
        return types != 0 ? call(calls[0]->who, text) : 0;
    }
    void tellWaiting() {
        if (isCollecting() != 0) {
            return;
        }
        std::map<int, std::vector<std::vector<Call*>>> bundles;
        int run = 0;
        int category = -1;
        for (Call* const each : std::exchange(m_waiting, {})) {
            run += std::exchange(category, each->category) != each->category ? 1 : 0;
            auto& groups = bundles[m_switches[3] != 0 ? run : category];
            const auto group =
                std::ranges::find(groups, each->who, [](auto& calls) { return calls[0]->who; });
            if (group != groups.end()) {
                group->push_back(each);
            } else if (each->mask != 0) {
                groups.push_back({each});
            }
        }
        ++m_telling;
        for (const auto& [bundle, groups] : bundles) {
            std::ranges::for_each(groups, [&](const auto& calls) { tell(calls, true); });
        }
        --m_telling;
    }

    std::vector<Registration> m_registrations;
    std::deque<Call> m_calls;
    std::vector<Call*> m_waiting;
    std::array<int, 4> m_switches = {1, 0, 0, 0};
    int m_depth = 0;
    int m_telling = 0;
};

constexpr int Listeners = 7;
constexpr std::array<int, 9> Categories = {6, 7, 6, 7, 6, 7, 31, 32, -1};  // two are registered
constexpr std::array<int, 3> Types = {0x1, 0x2, static_cast<int>(0x80000000U)};

/// A manager with objects and listeners, and a log of all calls and answers.
template <class M>
class World {
public:
    World() {
        for (int i = 0; i < 5; ++i) {
            m_parts[i] = new Part(i > 0 ? m_parts[i - 1] : nullptr, i);
        }
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World() {
        m_listeners[0].reset();  // the others outlive the manager
        m_manager.reset();
        std::ranges::for_each(m_parts, [](Part* part) { part->vRelease(); });
    }

    /// Makes the step that belongs to the seed.
    void perform(std::uint32_t seed) {
        const int answer = make(qxtest::TestRandom(seed));
        log << "\n answer " << answer << " collects " << m_manager->isCollecting() << " tells "
            << m_manager->isTelling() << " hears";
        for (const int type : Types) {
            for (const int category : Categories) {
                log << m_manager->hears(category, type);
            }
        }
    }
    /// Lets a listener make some steps when it is told something the next time, and perhaps veto.
    void plan(int listener, std::uint32_t seed) { m_plans[listener] = seed; }

    std::ostringstream log;

private:
    template <class L>
    std::unique_ptr<QxEventListener> listening(int index) {
        auto made = std::make_unique<L>();
        made->hear = [this, index](const std::string& text) {
            log << "\n listener " << index << " hears " << text;
            const auto seed = std::exchange(m_plans[index], std::nullopt);
            for (std::uint32_t i = 0; seed && i <= *seed % 4; ++i) {
                perform(*seed + i);
            }
            log << "\n listener " << index << " returns";
            return seed && *seed % 5 == 0 ? 7 : 0;
        };
        return made;
    }
    int destroy(int index) {
        m_manager->listenerDestroyed(m_listeners[index].get());
        m_listeners[index].reset();
        return 0;
    }
    int make(qxtest::TestRandom random) {
        M& manager = *m_manager;
        const int what = random.below(22);
        const int index = random.below(5);
        Part* const part = m_parts[index];
        Part* const other = m_parts[random.below(5)];
        const int category = Categories[random.below(9)];
        const int type = Types[random.below(3)];
        const int masks[] = {-1, type, type | Types[0], type | Types[1], 0};
        const int mask = masks[random.below(22) / 5];
        const int on = random.chance(70) ? 5 : 0;
        const int who = random.below(Listeners);
        auto& slot = m_listeners[who];
        if (slot == nullptr && random.chance(80)) {
            slot = who < 5 ? listening<Listener>(who) : listening<Vetoer>(who);
        }
        return what < 5    ? manager.addListener(part, slot.get(), mask, category)
               : what < 12 ? manager.fire(part, type, category, on == 0 ? other : nullptr)
               : what < 14 ? manager.removeListener(part, slot.get(), mask, category)
               : what < 15 ? manager.removeAllListeners(part, mask, category)
               : what < 16 ? (manager.eventSourceDiscarded(part), 0)
               : what < 17 ? destroy(who)
               : what < 18 ? (part->whole = other->id < index ? other : nullptr, 0)
               : what < 20 ? manager.turn(who % 4, on)
               : on != 0   ? manager.openBatch()
                           : manager.closeBatch();
    }

    std::unique_ptr<M> m_manager = std::make_unique<M>();
    std::array<Part*, 5> m_parts{};
    std::array<std::unique_ptr<QxEventListener>, Listeners> m_listeners;
    std::array<std::optional<std::uint32_t>, Listeners> m_plans;
};

TEST(EventManager, TellsWhatANaiveOneTells) {
    for (std::uint32_t run = 0; run < 150; ++run) {
        const std::uint32_t seed = qxtest::testSeed(1) + run;
        SCOPED_TRACE(qxtest::seedTrace(seed));
        std::mt19937 seeds(seed);
        {
            World<Manager> real;
            World<NaiveManager> naive;
            for (int i = 0; i < 150; ++i) {
                const auto listener = static_cast<int>(seeds() % Listeners);
                const auto planned = static_cast<std::uint32_t>(seeds());
                real.plan(listener, planned);
                naive.plan(listener, planned);
                const auto step = static_cast<std::uint32_t>(seeds());
                real.perform(step);
                naive.perform(step);
                ASSERT_EQ(real.log.str(), naive.log.str()) << "step " << i;
                real.log.str("");
                naive.log.str("");
            }
        }
        ASSERT_EQ(Part::alive, 0);
    }
}

class EventManagerTest : public testing::Test {
protected:
    EventManagerTest() {
        a.hear = [this](const std::string& text) { return heard.push_back("a " + text), 0; };
        b.hear = [this](const std::string& text) { return heard.push_back("b " + text), 0; };
        manager.coalesce(1);
    }
    Part* newSource() {
        auto* const source = new Part(&whole, 2);
        source->onDestroy = [this] { heard.push_back("gone"); };
        return source;
    }
    std::vector<std::string> take() { return std::exchange(heard, {}); }

    Manager manager;
    std::vector<std::string> heard;
    Part whole;
    Part part{&whole, 1};
    Listener a;
    Listener b;
};

TEST_F(EventManagerTest, RefusesWhatIsNothing) {
    EXPECT_EQ(manager.addListener(nullptr, &a, -1, 6), 0);
    EXPECT_EQ(manager.registerEventClass(32) + manager.registerEventClass(-1), 0);
    EXPECT_EQ(manager.registerEventClass(31), 1);
    EXPECT_EQ(manager.addListener(&part, &a, -1, 31), 1);
    EXPECT_EQ(manager.fireEvent(nullptr, 0), 0);
    EXPECT_EQ(manager.fireEvent(new ColorEvent(1, nullptr, 31), 0), 1);
}

TEST_F(EventManagerTest, ListenersLeaveAllManagersAndCopiesAreInNone) {
    Manager other;
    {
        Manager shortLived;
        auto doomed = std::make_unique<Listener>();
        for (Manager* each : {&manager, &shortLived, &other}) {
            each->addListener(&part, doomed.get(), -1, 6);
            each->addListener(&part, &a, -1, 6);
        }
        { const Listener copy(a); }
        manager.openBatch();
        manager.fire(&part, 1, 6, nullptr);
        manager.eventSourceDiscarded(&part);
    }
    manager.closeBatch();
    other.fire(&part, 1, 6, nullptr);
    EXPECT_THAT(heard, ElementsAre("a group 6/1: 1@1", "a 6/1: 1@1"));
}

TEST_F(EventManagerTest, WhatAnEventNamesLivesUntilAllHaveHeardOfIt) {
    Part* source = newSource();
    const auto discard = [&](const std::string&) {
        manager.eventSourceDiscarded(source);
        source->vRelease();
        return 0;
    };
    a.hear = [&](const std::string& text) {
        heard.push_back("a " + text);
        EXPECT_EQ(manager.removeListener(source, &a, -1, 6), 0) << "it has been told";
        return 0;
    };
    manager.addListener(&whole, &b, -1, 6);
    manager.addListener(source, &a, -1, 6);
    manager.openBatch();
    manager.fire(source, 1, 6, nullptr);
    discard("");
    EXPECT_THAT(take(), ElementsAre());
    manager.closeBatch();
    EXPECT_THAT(take(), ElementsAre("a group 6/1: 1@2", "b group 6/1: 1@2", "gone"));

    source = newSource();
    Vetoer discarder;
    discarder.hear = [&](const std::string& text) {
        discard(text);
        EXPECT_EQ(manager.removeListener(source, &discarder, -1, 6), 0) << "it has been asked";
        return 0;
    };
    manager.addListener(source, &discarder, -1, 6);
    manager.addListener(source, &a, -1, 6);
    manager.fire(source, 1, 6, nullptr);
    EXPECT_THAT(take(), ElementsAre("a 6/1: 1@2", "b 6/1: 1@2", "gone"));

    source = newSource();
    auto shortLived = std::make_unique<Manager>();
    shortLived->coalesce(1);
    shortLived->addListener(source, &a, -1, 6);
    shortLived->openBatch();
    shortLived->fire(source, 1, 6, nullptr);
    source->vRelease();
    EXPECT_THAT(take(), ElementsAre());
    shortLived.reset();
    EXPECT_THAT(take(), ElementsAre("gone")) << "a batch is forgotten with its manager";
}

TEST_F(EventManagerTest, EventsAboutADyingObjectAreToldAtOnceAfterWhatWaits) {
    auto* const source = new Part(&whole, 2);
    source->onDestroy = [&] { manager.fire(source, 2, 6, nullptr); };
    manager.addListener(&whole, &a, -1, 6);
    manager.openBatch();
    manager.fire(&part, 1, 6, nullptr);
    source->vRelease();
    EXPECT_THAT(take(), ElementsAre("a group 6/1: 1@1", "a 6/2: 2@2"));
    manager.closeBatch();
    EXPECT_THAT(take(), ElementsAre());
}

TEST_F(EventManagerTest, ManyListenersAtOneSourceComeAndGoInLinearTime) {
    const auto comeAndGo = [&](int count) {
        std::deque<Listener> listeners(static_cast<std::size_t>(count));
        for (Listener& listener : listeners) {
            manager.addListener(&part, &listener, 1, 6);
            manager.addListener(&part, &listener, 2, 6);
        }
        for (int i = 0; i < count / 2; ++i) {
            manager.removeListener(&part, &listeners[static_cast<std::size_t>(i) * 2], -1, 6);
        }
    };
    EXPECT_LT(utiltest::growth(comeAndGo, 1000), 100);
    EXPECT_EQ(manager.hears(6, -1), 0);
}

TEST(EventGroup, CopiesOfAGroupHaveTheirOwnMembers) {
    Part source;
    QxGroupEventData group;
    auto* member = new QxSingleEventData(&source);
    member->type(1);
    group.appendData(member);
    group.appendData(nullptr);
    member->vRelease();
    const std::unique_ptr<QxGroupEventData> deep(group.cloneObject());
    const std::unique_ptr<QxGroupEventData> attributes(group.cloneAttributes());
    EXPECT_EQ(attributes->pDataList()->count(), 0);
    group = *deep;
    group.copyObject(&group);
    ASSERT_EQ(deep->pDataList()->count() + group.pDataList()->count(), 2);
    auto* copy = static_cast<QxEventData*>(deep->pDataList()->pFirstObject());
    EXPECT_NE(copy, group.pDataList()->pFirstObject());
    EXPECT_EQ(copy->pSource(), &source);
    EXPECT_EQ(copy->type(), 1);
}

}  // namespace
