// Owning pointers for GLib's objects, strings and errors.
#pragma once

#include <gio/gio.h>

#include <memory>

namespace kelpa {

/// The deleter of the pointers below: drops a reference or frees memory that GLib allocated.
struct GlibDelete
{
    void operator()(char* text) const { g_free(text); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
};

struct GObjectUnref
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference, or the allocation.
template <class T>
using GlibPointer = std::unique_ptr<T, GlibDelete>;

/// Owns one reference of an object.
template <class T>
using GObjectPointer = std::unique_ptr<T, GObjectUnref>;

} // namespace kelpa
