#include "cli/system/Rasterizer.h"

#include "cli/system/Library.h"
#include "cli/words/Failure.h"
#include "cli/words/Letters.h"
#include "cli/words/VisibleText.h"

#include <cmath>
#include <memory>

namespace vexroc {

// What is used of librsvg 2.52 or later, of cairo and of GObject, as their stable C interfaces declare it.
extern "C" {
struct RsvgHandle;
struct cairo_t;
struct cairo_surface_t;
struct RsvgRectangle {
    double x, y, width, height;
};
struct GError {
    unsigned domain;
    int code;
    char* message;
};
using CairoWrite = int (*)(void* closure, const unsigned char* data, unsigned length);
}

struct SvgLibrary {
    explicit SvgLibrary(const std::string& purpose)
        : rsvg("librsvg-2.so.2", "librsvg2-2", purpose, outputError),
          cairo("libcairo.so.2", "libcairo2", purpose, outputError),
          gobject("libgobject-2.0.so.0", "libglib2.0-0", purpose, outputError)
    {
    }

    Library rsvg;
    Library cairo;
    Library gobject;

    RsvgHandle* (*newFromData)(const unsigned char*, std::size_t, GError**) = rsvg["rsvg_handle_new_from_data"];
    int (*sizeInPixels)(RsvgHandle*, double*, double*) = rsvg["rsvg_handle_get_intrinsic_size_in_pixels"];
    int (*render)(RsvgHandle*, cairo_t*, const RsvgRectangle*, GError**) = rsvg["rsvg_handle_render_document"];
    cairo_surface_t* (*image)(int format, int, int) = cairo["cairo_image_surface_create"];
    cairo_surface_t* (*pdf)(CairoWrite, void*, double, double) = cairo["cairo_pdf_surface_create_for_stream"];
    int (*writePng)(cairo_surface_t*, CairoWrite, void*) = cairo["cairo_surface_write_to_png_stream"];
    void (*finish)(cairo_surface_t*) = cairo["cairo_surface_finish"];
    int (*surfaceStatus)(cairo_surface_t*) = cairo["cairo_surface_status"];
    void (*destroySurface)(cairo_surface_t*) = cairo["cairo_surface_destroy"];
    cairo_t* (*create)(cairo_surface_t*) = cairo["cairo_create"];
    void (*destroy)(cairo_t*) = cairo["cairo_destroy"];
    const char* (*statusText)(int) = cairo["cairo_status_to_string"];
    void (*unref)(void*) = gobject["g_object_unref"];
};

namespace {

Failure cannotDraw(const std::string& why) { return outputError("librsvg could not draw the picture: " + why); }

/// The size of a picture has two decimals; what they cut off is not another dot.
int wholeDots(double length) { return static_cast<int>(std::ceil(length - 0.1)); }

int append(void* bytes, const unsigned char* data, unsigned length)
{
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return 0;
}

/// A document that librsvg has read.
class SvgDocument {
public:
    SvgDocument(const SvgLibrary& library, const std::string& svg) : library_(library), handle_(nullptr, library.unref)
    {
        GError* error = nullptr;
        handle_.reset(library.newFromData(reinterpret_cast<const unsigned char*>(svg.data()), svg.size(), &error));
        if (!handle_)
            throw cannotDraw(visible(error->message));
        if (library.sizeInPixels(handle_.get(), &width_, &height_) == 0)
            throw cannotDraw("it has no size");
    }

    [[nodiscard]] std::string png(double scale) const
    {
        constexpr int rgb = 1; // without transparency
        const int width = wholeDots(width_ * scale);
        const int height = wholeDots(height_ * scale);
        const Surface surface(library_.image(rgb, width, height), library_.destroySurface);
        draw(surface.get(), width, height);
        std::string bytes;
        requireDone(library_.writePng(surface.get(), append, &bytes));
        return bytes;
    }

    [[nodiscard]] std::string pdf() const
    {
        constexpr double points = 72.0 / 96.0; // in a pixel
        std::string bytes;
        const Surface surface(library_.pdf(append, &bytes, width_ * points, height_ * points), library_.destroySurface);
        draw(surface.get(), width_ * points, height_ * points);
        library_.finish(surface.get());
        requireDone(library_.surfaceStatus(surface.get()));
        return bytes;
    }

private:
    using Surface = std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)>;

    void requireDone(int status) const
    {
        if (status != 0)
            throw cannotDraw(library_.statusText(status));
    }

    void draw(cairo_surface_t* surface, double width, double height) const
    {
        requireDone(library_.surfaceStatus(surface));
        const std::unique_ptr<cairo_t, void (*)(cairo_t*)> context(library_.create(surface), library_.destroy);
        const RsvgRectangle all{0, 0, width, height};
        GError* error = nullptr;
        if (library_.render(handle_.get(), context.get(), &all, &error) == 0)
            throw cannotDraw(visible(error->message));
    }

    const SvgLibrary& library_;
    std::unique_ptr<RsvgHandle, void (*)(void*)> handle_;
    double width_ = 0;
    double height_ = 0;
};

} // namespace

Rasterizer::Rasterizer(const std::string& option, const std::string& file)
{
    if (endsWithIgnoringCase(file, ".svg"))
        return;
    isPng_ = endsWithIgnoringCase(file, ".png");
    if (!isPng_ && !endsWithIgnoringCase(file, ".pdf"))
        throw usageError(option + " " + inQuotes(file) + ": expected a name that ends in .svg, .pdf or .png");
    static const SvgLibrary library(option + " " + inQuotes(file));
    library_ = &library;
}

std::string Rasterizer::convert(std::string svg, double resolution) const
{
    if (library_ == nullptr)
        return svg;
    const SvgDocument document(*library_, svg);
    return isPng_ ? document.png(resolution) : document.pdf();
}

} // namespace vexroc
