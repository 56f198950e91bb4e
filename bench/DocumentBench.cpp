// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// Loading and saving a drawing, beside the bare XML library parsing and serialising the very same
// bytes.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "BenchDrawing.h"
#include "qx/xml/QxDGraphManagerXMLReader.h"
#include "qx/xml/QxDGraphManagerXMLWriter.h"

namespace {

using qx::bench::BenchDrawing;

const std::string& documentOf(std::int64_t nodes) {
    static std::int64_t last = 0;
    static std::string bytes;
    if (last != nodes) {
        BenchDrawing drawing(nodes);
        drawing.build();
        QxDGraphManagerXMLWriter(&bytes, 0, 1)
            .write(drawing.nodes.front()->pOwnerGraph()->pOwnerGraphManager());
        last = nodes;
    }
    return bytes;
}

std::unique_ptr<xercesc::XercesDOMParser> parsed(const std::string& bytes) {
    auto parser = std::make_unique<xercesc::XercesDOMParser>();
    parser->parse(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(bytes.data()),
                                             bytes.size(), "bench"));
    return parser;
}

void tellSize(benchmark::State& state, const std::string& bytes) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

void BM_DocumentParseBare(benchmark::State& state) {
    const std::string& bytes = documentOf(state.range(0));
    xercesc::XMLPlatformUtils::Initialize();
    for (auto _ : state) {
        benchmark::DoNotOptimize(parsed(bytes)->getDocument());
    }
    tellSize(state, bytes);
}

void BM_DocumentLoad(benchmark::State& state) {
    const std::string& bytes = documentOf(state.range(0));
    QxXMLLimits limits;
    limits.bytes = std::size_t{4} << 30;
    for (auto _ : state) {
        QxFactory factory;
        QxDGraphManager* const manager = factory.newDGraphManager();
        {
            QxDGraphManagerXMLReader reader(bytes.data(), bytes.size());
            reader.limits(limits);
            if (reader.read(manager) == 0) {
                state.SkipWithError("the document is refused");
            }
        }
        state.PauseTiming();
        manager->vRelease();
        state.ResumeTiming();
    }
    tellSize(state, bytes);
}

void BM_DocumentSerializeBare(benchmark::State& state) {
    const std::string& bytes = documentOf(state.range(0));
    xercesc::XMLPlatformUtils::Initialize();
    const auto parser = parsed(bytes);
    xercesc::DOMImplementation* const implementation =
        xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
    for (auto _ : state) {
        xercesc::DOMLSSerializer* const serializer = implementation->createLSSerializer();
        xercesc::DOMLSOutput* const output = implementation->createLSOutput();
        xercesc::MemBufFormatTarget target(bytes.size());
        output->setByteStream(&target);
        serializer->write(parser->getDocument(), output);
        benchmark::DoNotOptimize(target.getRawBuffer());
        output->release();
        serializer->release();
    }
    tellSize(state, bytes);
}

void BM_DocumentSave(benchmark::State& state) {
    BenchDrawing drawing(state.range(0));
    drawing.build();
    const QxDGraphManager* const manager =
        drawing.nodes.front()->pOwnerGraph()->pOwnerGraphManager();
    std::string bytes;
    for (auto _ : state) {
        if (QxDGraphManagerXMLWriter(&bytes, 0, 1).write(manager) == 0) {
            state.SkipWithError("the drawing cannot be written");
        }
    }
    tellSize(state, bytes);
}

void sizes(benchmark::internal::Benchmark* one) {
    one->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_DocumentParseBare)->Apply(sizes);
BENCHMARK(BM_DocumentLoad)->Apply(sizes);
BENCHMARK(BM_DocumentSerializeBare)->Apply(sizes);
BENCHMARK(BM_DocumentSave)->Apply(sizes);
// No more than once: whether it loads at all.
BENCHMARK(BM_DocumentLoad)->Arg(1000000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
