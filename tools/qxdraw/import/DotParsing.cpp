// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Graphviz's parser with our own memory and input. Its own input comes line by line, and each piece
// makes its scanner start again on the string that it is in: quadratic in the lines of a long
// string. Its own memory answers null in the end, which it does not survive.

#include "import/DotParsing.h"

#include <algorithm>
#include <csetjmp>
#include <cstdlib>
#include <cstring>
#include <new>
#include <sstream>
#include <string_view>

#include "import/ImportError.h"
#include "import/Numbers.h"

namespace qxdraw {

namespace {

/// Where to go on when memory ends. The frames between are the parser's own, which are C.
thread_local std::jmp_buf* withoutMemory = nullptr;

void* given(void* memory) {
    if (memory == nullptr && withoutMemory != nullptr) {
        std::longjmp(*withoutMemory, 1);
    }
    return memory;
}

extern "C" {

/// Graphviz reports through a function that takes no context.
thread_local std::string* parserMessages = nullptr;

static int keepMessage(char* message) {
    if (parserMessages != nullptr) {
        *parserMessages += message;
    }
    return 0;
}

static int readText(void* source, char* buffer, int size) {
    auto& rest = *static_cast<std::string_view*>(source);
    const std::size_t count = std::min(rest.size(), static_cast<std::size_t>(size));
    std::memcpy(buffer, rest.data(), count);
    rest.remove_prefix(count);
    return static_cast<int>(count);
}

static void* openMemory(Agdisc_t*) {
    return nullptr;
}

static void* allocate(void*, size_t size) {
    return given(std::calloc(1, size));
}

static void* resize(void*, void* memory, size_t oldSize, size_t size) {
    char* const moved = static_cast<char*>(given(std::realloc(memory, size)));
    if (moved != nullptr && size > oldSize) {
        std::memset(moved + oldSize, 0, size - oldSize);
    }
    return moved;
}

static void release(void*, void* memory) {
    std::free(memory);
}
}

/// What a graph uses as long as it lives.
Agdisc_t* services() {
    static Agmemdisc_t memory = {openMemory, allocate, resize, release, nullptr};
    static Agiodisc_t input = {readText, AgIoDisc.putstr, AgIoDisc.flush};
    static Agdisc_t all = {&memory, &AgIdDisc, &input};
    return &all;
}

/// Takes " in line 4 of input" out of a message; the line, 0 without one.
int takeLine(std::string& message) {
    constexpr std::string_view Mark = " in line ";
    const std::size_t at = message.find(Mark);
    if (at == std::string::npos) {
        return 0;
    }
    const std::size_t number = at + Mark.size();
    std::size_t end = std::min(message.find_first_not_of("0123456789", number), message.size());
    const int line =
        static_cast<int>(parseNumber(message.substr(number, end - number)).value_or(0));
    constexpr std::string_view Input = " of input";
    end += message.compare(end, Input.size(), Input) == 0 ? Input.size() : 0;
    message.erase(at, end - at);
    return line;
}

/// The first message of a kind; empty when there is none.
std::string firstMessage(const std::string& messages, std::string_view kind) {
    std::istringstream lines(messages);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(kind)) {
            return line.substr(kind.size());
        }
    }
    return {};
}

ImportError parserError(const std::string& messages) {
    std::string message = firstMessage(messages, "Error: ");
    const int line = takeLine(message);
    return ImportError(message.empty() ? "no graph in it" : message, line);
}

void addWarnings(const std::string& messages, std::vector<DocumentWarning>& warnings) {
    constexpr std::string_view Kind = "Warning: ";
    std::istringstream lines(messages);
    for (std::string message; std::getline(lines, message);) {
        if (message.starts_with(Kind)) {
            message.erase(0, Kind.size());
            const int line = takeLine(message);
            warnings.push_back({message, line});
        }
    }
}

Agraph_t* parseWithin(std::string_view text) {
    return agread(&text, services());
}

/// Null, as for a faulty text, when memory ends; then `isShort` is set.
Agraph_t* parseSafely(std::string_view text, volatile bool& isShort) {
    std::jmp_buf here;
    withoutMemory = &here;
    Agraph_t* graph = nullptr;
    if (setjmp(here) == 0) {
        graph = parseWithin(text);
    } else {
        isShort = true;
        graph = nullptr;
    }
    withoutMemory = nullptr;
    return graph;
}

}  // namespace

ParsedDot parseDot(const std::string& text, std::vector<DocumentWarning>& warnings) {
    // Tells a label that is empty from one that was never given.
    agattr(nullptr, AGNODE, const_cast<char*>("label"), const_cast<char*>("\\N"));
    std::string messages;
    parserMessages = &messages;
    agreseterrors();
    const agusererrf before = agseterrf(keepMessage);
    agsetfile(nullptr);
    agreadline(1);
    volatile bool isShort = false;
    ParsedDot graph(parseSafely(text, isShort));
    const bool failed = graph == nullptr || agerrors() != 0;
    parserMessages = nullptr;
    if (failed && !isShort) {
        // The parser's leftovers would spoil the next text; a graph without fault clears them.
        constexpr int Attempts = 3;
        for (int i = 0; i < Attempts && !ParsedDot(parseWithin("graph{}")); ++i) {
        }
    }
    agseterrf(before);
    if (isShort) {
        throw std::bad_alloc();
    }
    if (failed) {
        throw parserError(messages);
    }
    addWarnings(messages, warnings);
    return graph;
}

}  // namespace qxdraw
