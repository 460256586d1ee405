#pragma once

#include <libheif/heif.h>

#include <memory>

/// Owners of what libheif hands out.
namespace Nimbrel::Images {

template <auto release>
struct Release {
  template <typename T>
  void operator()(T* object) const {
    release(object);
  }
};

using HeifContext = std::unique_ptr<heif_context, Release<&heif_context_free>>;
using HeifHandle = std::unique_ptr<const heif_image_handle, Release<&heif_image_handle_release>>;
using HeifImage = std::unique_ptr<heif_image, Release<&heif_image_release>>;
using HeifDecodingOptions = std::unique_ptr<heif_decoding_options, Release<&heif_decoding_options_free>>;
using HeifEncoder = std::unique_ptr<heif_encoder, Release<&heif_encoder_release>>;
using HeifEncodingOptions = std::unique_ptr<heif_encoding_options, Release<&heif_encoding_options_free>>;
using HeifColours = std::unique_ptr<heif_color_profile_nclx, Release<&heif_nclx_color_profile_free>>;

}  // namespace Nimbrel::Images
