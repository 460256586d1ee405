#pragma once

#include <QImage>
#include <QSize>

#include <span>

#include <spa/param/video/raw.h>

struct spa_buffer;
struct spa_pod;
struct spa_pod_builder;

/// What PipeWire says about pictures of a screen, and how they lie in its buffers. No state, any thread.
namespace Nimbrel::Screencapture {

/// The formats we take, for the negotiation: four bytes a pixel, any size and rate, in memory that can be read. Lives
/// in the builder's memory.
[[nodiscard]] const spa_pod* wantedFormats(spa_pod_builder& builder);

/// What we want of the buffers once the format is known: plain memory, and the part of the picture that counts.
[[nodiscard]] const spa_pod* wantedBuffers(spa_pod_builder& builder);
[[nodiscard]] const spa_pod* wantedCrop(spa_pod_builder& builder);

/// The format that was agreed upon; its size is empty when it is none of ours.
[[nodiscard]] spa_video_info_raw agreedFormat(const spa_pod* format);

/// A copy of the picture in a buffer, without transparency. Null when there is none: the buffer says only that the
/// pointer has moved, is damaged, or holds less than the format promises.
[[nodiscard]] QImage pictureIn(const spa_buffer& buffer, const spa_video_info_raw& format);

}  // namespace Nimbrel::Screencapture
