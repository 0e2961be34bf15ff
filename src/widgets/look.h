#pragma once

#include <QPalette>
#include <QString>
#include <cstdint>

namespace orin::widgets {

enum class Theme { kSystem, kLight, kDark };

/// The colours of the program by what they are for, with their alpha.
struct Colors {
  QRgb app;     // behind the panels
  QRgb panel;   // panels, bars, menus
  QRgb raised;  // pop-ups, badges
  QRgb field;   // fields, editor
  QRgb border;  // borders, pane lines
  QRgb hair;    // lines within a panel
  QRgb text;
  QRgb second;  // secondary text, axis
  QRgb off;     // disabled, idle bars
  QRgb accent;  // accent, links, focus
  QRgb select;  // selection
  QRgb hover;
  QRgb chart;
  QRgb grid;
  QRgb month;  // month lines
  QRgb up;
  QRgb down;
  QRgb upsoft;    // volume of a rise
  QRgb downsoft;  // volume of a fall
  QRgb blue;      // palette entry 9
  QRgb green;     // 10
  QRgb cyan;      // 11
  QRgb red;       // 12
  QRgb magenta;   // 13
  QRgb yellow;    // 14
  QRgb draw;      // drawn lines
  QRgb cross;     // cross hair
  QRgb tag;       // tag of the cross hair
  QRgb warn;      // warning
  QRgb good;      // in order
  QRgb figure;    // figures in the editor
};
/// For the dark grounds or the light ones, as the palette has them.
const Colors& ColorsOf(const QPalette& palette);
bool IsDark(const QPalette& palette);
/// `color` as a text that can be read on the palette's rows.
QColor TextColorOnRows(QRgb color, const QPalette& palette);

/// Whether a font with Japanese letters was found; without one texts cannot be read.
bool HasJapaneseFont();

/// Style, font and translations of the whole program. Made once, before the first window.
class Look {
 public:
  Look();

  /// Colours and the size of texts in percent (75..200), for all windows at once.
  void Apply(Theme theme, int32_t font_percent) const;

 private:
  bool is_desktop_dark_;
  double point_size_;
};

/// The icon of the program, as a resource.
QString IconPath();

}  // namespace orin::widgets
