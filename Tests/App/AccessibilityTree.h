#pragma once

#include "Support/DesktopSession.h"
#include "Support/SessionBus.h"

#include <QDBusConnection>
#include <QString>

#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// A part of another program as a screen reader has it.
struct AccessiblePart {
  QString bus;   ///< who to ask
  QString path;  ///< for what
  std::string name;
  std::string role;  ///< as AT-SPI calls it: "push button"
  bool isShowing = false;
  bool isFocusable = false;
};

/// A desktop's bus for screen readers, with its registry, on a session bus of its own; programs that are started while
/// it lives tell it what they show. Reads as a screen reader does, over that bus.
class AccessibilityBus {
 public:
  AccessibilityBus();
  ~AccessibilityBus();
  AccessibilityBus(const AccessibilityBus&) = delete;
  AccessibilityBus& operator=(const AccessibilityBus&) = delete;

  /// Everything below the programs that have announced themselves, themselves included: parents before children.
  [[nodiscard]] std::vector<AccessiblePart> parts() const;
  /// Does the first thing that can be done with a part, which of a button is pressing it.
  [[nodiscard]] bool act(const AccessiblePart& part) const;

 private:
  void connect();
  [[nodiscard]] QVariant property(const AccessiblePart& part, const char* interface, const char* name) const;
  [[nodiscard]] std::vector<AccessiblePart> childrenOf(const AccessiblePart& part) const;
  void read(AccessiblePart& part) const;

  SessionBus session_;
  DesktopClient launcher_;
  QDBusConnection connection_;
};

}  // namespace Nimbrel::Testing
