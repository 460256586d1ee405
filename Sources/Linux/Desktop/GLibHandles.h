#pragma once

#include <glib-object.h>
#include <glib.h>

#include <memory>

namespace Nimbrel {

template <auto release>
struct GLibRelease {
  template <class Thing>
  void operator()(Thing* thing) const {
    release(thing);
  }
};

/// Owners of what the library hands out.
using GLibText = std::unique_ptr<char, GLibRelease<g_free>>;
using GLibError = std::unique_ptr<GError, GLibRelease<g_error_free>>;
using GLibVariant = std::unique_ptr<GVariant, GLibRelease<g_variant_unref>>;
template <class Object>
using GLibObject = std::unique_ptr<Object, GLibRelease<g_object_unref>>;

}  // namespace Nimbrel
