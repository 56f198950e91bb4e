// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "picture/PngWriter.h"

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <algorithm>
#include <cmath>
#include <memory>

#include "picture/PictureError.h"

namespace qxdraw {

namespace {

template <class T, void (*Free)(T*)>
struct Release {
    void operator()(T* object) const { Free(object); }
};

void unref(RsvgHandle* handle) {
    g_object_unref(handle);
}

using Handle = std::unique_ptr<RsvgHandle, Release<RsvgHandle, unref>>;
using Surface = std::unique_ptr<cairo_surface_t, Release<cairo_surface_t, cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Release<cairo_t, cairo_destroy>>;

/// Takes ownership of the error.
[[noreturn]] void fail(const char* what, GError* error) {
    const std::string reason = error == nullptr ? "unknown reason" : error->message;
    g_clear_error(&error);
    throw PictureError(std::string(what) + ": " + reason);
}

Handle load(const std::string& svg) {
    GError* error = nullptr;
    const std::unique_ptr<GInputStream, Release<void, g_object_unref>> stream(
        g_memory_input_stream_new_from_data(svg.data(), static_cast<gssize>(svg.size()), nullptr));
    // Large drawings hold more elements than the default limits let pass.
    Handle handle(rsvg_handle_new_from_stream_sync(stream.get(), nullptr,
                                                   RSVG_HANDLE_FLAG_UNLIMITED, nullptr, &error));
    if (!handle) {
        fail("the picture cannot be rendered", error);
    }
    return handle;
}

cairo_status_t append(void* bytes, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
}

void requireSuccess(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw PictureError(std::string("the image cannot be made: ") +
                           cairo_status_to_string(status));
    }
}

}  // namespace

std::string writePng(const std::string& svg, double width, double height) {
    const auto [columns, rows, scale] = pngSize(width, height);
    const Handle handle = load(svg);
    const Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, columns, rows));
    requireSuccess(cairo_surface_status(surface.get()));
    const Context context(cairo_create(surface.get()));
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    cairo_paint(context.get());
    const RsvgRectangle page{0, 0, width * scale, height * scale};
    GError* error = nullptr;
    if (rsvg_handle_render_document(handle.get(), context.get(), &page, &error) == FALSE) {
        fail("the picture cannot be rendered", error);
    }
    requireSuccess(cairo_status(context.get()));
    std::string bytes;
    requireSuccess(cairo_surface_write_to_png_stream(surface.get(), append, &bytes));
    return bytes;
}

}  // namespace qxdraw
