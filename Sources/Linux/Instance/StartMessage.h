#pragma once

#include "Platform/SingleInstance.h"

#include <QByteArray>

#include <optional>

/// A request to start as it goes from one process to another over a local socket: an object of JSON. Any thread.
namespace Nimbrel::StartMessage {

/// Longer ones come from nobody of ours.
inline constexpr qsizetype longest = 1 << 20;

[[nodiscard]] QByteArray encode(const StartRequest& request);

/// Absent for what is no such message.
[[nodiscard]] std::optional<StartRequest> decode(const QByteArray& message);

}  // namespace Nimbrel::StartMessage
