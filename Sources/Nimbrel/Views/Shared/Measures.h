#pragma once

/// The measures of all windows, in device-independent pixels at the desktop's default size of text. What holds text
/// grows with it: pass such heights through scaled() (Views/Shared/TextStyles.h).
namespace Nimbrel::Measures {

/// Steps of spacing.
inline constexpr int step2 = 2;
inline constexpr int step4 = 4;
inline constexpr int step6 = 6;
inline constexpr int step8 = 8;
inline constexpr int step12 = 12;
inline constexpr int step16 = 16;
inline constexpr int step20 = 20;
inline constexpr int step24 = 24;

inline constexpr int dialogMargin = 20;
inline constexpr int formMargin = 14;
inline constexpr int rowPadding = 12;
inline constexpr int sectionGap = 14;
inline constexpr int buttonGap = 8;

inline constexpr int toolbarHeight = 48;
inline constexpr int headerLineHeight = 46;
inline constexpr int sidebarRowHeight = 26;
inline constexpr int sectionTitleHeight = 26;
inline constexpr int formRowHeight = 32;
inline constexpr int tableRowHeight = 28;
inline constexpr int tableHeaderHeight = 26;
inline constexpr int menuItemHeight = 26;
inline constexpr int buttonHeight = 28;
inline constexpr int smallButtonHeight = 24;
inline constexpr int fieldHeight = 28;
inline constexpr int formFieldHeight = 26;
inline constexpr int iconButtonHeight = 42;
inline constexpr int dialogFooterHeight = 60;
inline constexpr int toolButtonWidth = 34;
inline constexpr int toolButtonHeight = 32;
inline constexpr int menuButtonWidth = 46;
inline constexpr int toggleWidth = 34;
inline constexpr int toggleHeight = 20;
inline constexpr int segmentedHeight = 46;
inline constexpr int segmentWidth = 62;
inline constexpr int busyRingSize = 14;

inline constexpr int panelRadius = 12;
inline constexpr int popoverRadius = 10;
inline constexpr int groupRadius = 8;    ///< groups, tables, menus, pins, previews, segmented controls
inline constexpr int toolRadius = 7;     ///< toolbar and icon buttons
inline constexpr int controlRadius = 6;  ///< picture boxes, buttons, fields, selected rows
inline constexpr int filmstripRadius = 5;
inline constexpr int thumbnailRadius = 4;

inline constexpr int sidebarWidth = 220;
inline constexpr int sidebarMinimum = 180;
inline constexpr int sidebarMaximum = 300;
inline constexpr int contentMinimum = 280;
inline constexpr int detailsWidth = 300;
inline constexpr int detailsMinimum = 240;
inline constexpr int detailsMaximum = 460;
inline constexpr int windowMinimumWidth = 1000;
inline constexpr int windowMinimumHeight = 600;
inline constexpr int dividerHitWidth = 9;
inline constexpr int searchFieldWidth = 226;
inline constexpr int searchFieldMinimum = 160;
inline constexpr int searchFieldHeight = 30;

inline constexpr int textSymbol = 16;
inline constexpr int smallButtonSymbol = 14;
inline constexpr int sidebarSymbol = 17;
inline constexpr int toolSymbol = 18;
inline constexpr int metaSymbol = 12;
inline constexpr int chevronSymbol = 11;  ///< beside the symbol of a menu button
inline constexpr int pickerSymbol = 13;
inline constexpr int emptySymbol = 44;
inline constexpr int noSelectionSymbol = 26;

inline constexpr double focusRingWidth = 2;
inline constexpr double focusRingGap = 2;
inline constexpr double selectionStroke = 2.5;
inline constexpr double disabledOpacity = 0.42;

}  // namespace Nimbrel::Measures
