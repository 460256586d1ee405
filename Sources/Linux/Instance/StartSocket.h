#pragma once

#include "Linux/Files/FileDescriptor.h"

#include <QByteArray>

#include <string>

/// A local socket by which processes of one user hand over requests to start: one message, one answer. Any thread.
namespace Nimbrel::StartSocket {

/// What the process that listens says when it has understood.
inline constexpr auto accepted = "ok\n";

/// Listens at that name in an open folder, in place of what stood there; not open when it cannot. Does not block.
[[nodiscard]] FileDescriptor listen(const FileDescriptor& folder, const std::string& name);

/// The next of those who have come, if it is of the same user; not open when there is none. Does not block.
[[nodiscard]] FileDescriptor accept(const FileDescriptor& listener);

/// Connects to who listens there; not open when nobody does.
[[nodiscard]] FileDescriptor connect(const FileDescriptor& folder, const std::string& name);

/// Sends the message and waits for the answer, for some seconds each. Whether it was accepted.
[[nodiscard]] bool ask(const FileDescriptor& connection, const QByteArray& message);

}  // namespace Nimbrel::StartSocket
