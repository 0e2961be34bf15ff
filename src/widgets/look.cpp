#include "widgets/look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QPalette>
#include <QStyleFactory>
#include <QTranslator>
#include <algorithm>
#include <array>

#include "base/color.h"

namespace orin::widgets {

namespace {

constexpr std::array kFamilies = {"Noto Sans CJK JP", "Noto Sans JP", "IPAexGothic",
                                  "IPAPGothic",       "IPAGothic",    "Takao Pゴシック",
                                  "VL PGothic"};

constexpr Colors kDarkColors = {
    .app = 0xff101317,
    .panel = 0xff171b21,
    .raised = 0xff20262e,
    .field = 0xff12161b,
    .border = 0xff2a313b,
    .hair = 0xff222831,
    .text = 0xffe4e8ee,
    .second = 0xff98a3b3,
    .off = 0xff5f6b7b,
    .accent = 0xff5aa7ff,
    .select = 0xff1d3757,
    .hover = 0xff1d232b,
    .chart = 0xff12151a,
    .grid = 0xff1e242c,
    .month = 0xff28303a,
    .up = 0xfff2545b,
    .down = 0xff3fb4c9,
    .upsoft = 0x66f2545b,
    .downsoft = 0x663fb4c9,
    .blue = 0xff6ea8fe,
    .green = 0xff45c486,
    .cyan = 0xff4cc9dc,
    .red = 0xffff7b72,
    .magenta = 0xffd58bff,
    .yellow = 0xffeac54f,
    .draw = 0xffff9f5a,
    .cross = 0xff7c8796,
    .tag = 0xffe4e8ee,
    .warn = 0xfff0b54a,
    .good = 0xff45c486,
    .figure = 0xffeac54f,
};

constexpr Colors kLightColors = {
    .app = 0xffeef0f3,
    .panel = 0xffffffff,
    .raised = 0xfff4f6f8,
    .field = 0xffffffff,
    .border = 0xffd5dae1,
    .hair = 0xffe6e9ee,
    .text = 0xff1b2129,
    .second = 0xff5a6675,
    .off = 0xff858f9c,
    .accent = 0xff1769d1,
    .select = 0xffd9e9fc,
    .hover = 0xfff0f4f9,
    .chart = 0xffffffff,
    .grid = 0xfff0f2f5,
    .month = 0xffe1e5ea,
    .up = 0xffd5303b,
    .down = 0xff137fa6,
    .upsoft = 0x55d5303b,
    .downsoft = 0x55137fa6,
    .blue = 0xff2c63d6,
    .green = 0xff12864c,
    .cyan = 0xff087c90,
    .red = 0xffd1342f,
    .magenta = 0xff9a3fc4,
    .yellow = 0xffb07d00,
    .draw = 0xffd9620a,
    .cross = 0xff7a8594,
    .tag = 0xff1b2129,
    .warn = 0xff986000,
    .good = 0xff12864c,
    .figure = 0xff8a6200,
};

constexpr double kTextContrast = 4.5;

base::Color ColorOf(const QColor& color) {
  return base::Color::FromNumber(color.red() | (color.green() << 8) | (color.blue() << 16));
}

struct PaletteRow {
  QPalette::ColorRole role;
  QRgb light;
  QRgb dark;
};

constexpr std::array kPalette = {
    PaletteRow{QPalette::Window, 0xfff1f3f5, 0xff23272e},
    PaletteRow{QPalette::WindowText, 0xff1b1f24, 0xffe4e7eb},
    PaletteRow{QPalette::Base, 0xffffffff, 0xff1a1d23},
    PaletteRow{QPalette::AlternateBase, 0xfff5f7f9, 0xff20242b},
    PaletteRow{QPalette::Text, 0xff1b1f24, 0xffe4e7eb},
    PaletteRow{QPalette::PlaceholderText, 0xff6b7480, 0xff8d97a5},
    PaletteRow{QPalette::Button, 0xffe6e9ed, 0xff303640},
    PaletteRow{QPalette::ButtonText, 0xff1b1f24, 0xffe4e7eb},
    PaletteRow{QPalette::BrightText, 0xffffffff, 0xffffffff},
    PaletteRow{QPalette::ToolTipBase, 0xfffffbe6, 0xff3a404b},
    PaletteRow{QPalette::ToolTipText, 0xff1b1f24, 0xffe4e7eb},
    PaletteRow{QPalette::Highlight, 0xff1f6fb5, 0xff2f7fc4},
    PaletteRow{QPalette::HighlightedText, 0xffffffff, 0xffffffff},
    PaletteRow{QPalette::Link, 0xff1f6fb5, 0xff79b8f0},
    PaletteRow{QPalette::LinkVisited, 0xff6a4fa3, 0xffb7a0ec},
    PaletteRow{QPalette::Light, 0xffffffff, 0xff414955},
    PaletteRow{QPalette::Midlight, 0xfff5f7f9, 0xff383f4a},
    PaletteRow{QPalette::Mid, 0xffb9c0c9, 0xff1c2026},
    PaletteRow{QPalette::Dark, 0xff98a1ad, 0xff14171c},
    PaletteRow{QPalette::Shadow, 0xff5b6470, 0xff0b0d10},
};

constexpr std::array kDisabledRoles = {QPalette::WindowText, QPalette::Text, QPalette::ButtonText};

QPalette PaletteOf(bool is_dark) {
  QPalette palette;
  for (const PaletteRow& row : kPalette) {
    palette.setColor(row.role, QColor::fromRgb(is_dark ? row.dark : row.light));
  }
  for (const QPalette::ColorRole role : kDisabledRoles) {
    palette.setColor(QPalette::Disabled, role, QColor::fromRgb(is_dark ? 0xff767f8c : 0xff8f98a3));
  }
  return palette;
}

/// Before the program has chosen its own palette.
bool IsDesktopDark() {
  const QPalette desktop = QGuiApplication::palette();
  return desktop.color(QPalette::Window).lightness() <
         desktop.color(QPalette::WindowText).lightness();
}

}  // namespace

bool IsDark(const QPalette& palette) {
  return base::IsDark(ColorOf(palette.color(QPalette::Base)));
}

const Colors& ColorsOf(const QPalette& palette) {
  return IsDark(palette) ? kDarkColors : kLightColors;
}

QColor TextColorOnRows(QRgb color, const QPalette& palette) {
  base::Color text = ColorOf(QColor::fromRgb(color));
  for (const QPalette::ColorRole ground : {QPalette::Base, QPalette::AlternateBase}) {
    text = base::Legible(text, ColorOf(palette.color(ground)), kTextContrast);
  }
  return {text.red, text.green, text.blue};
}

bool HasJapaneseFont() { return !QFontDatabase::families(QFontDatabase::Japanese).isEmpty(); }

Look::Look() : is_desktop_dark_(IsDesktopDark()) {
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  const QStringList installed = QFontDatabase::families(QFontDatabase::Japanese);
  QFont font = QApplication::font();
  for (const char* family : kFamilies) {
    if (!installed.contains(QString::fromUtf8(family))) continue;
    font.setFamily(QString::fromUtf8(family));
    break;
  }
  font.setStyleHint(QFont::SansSerif);
  point_size_ = std::max(font.pointSizeF(), 10.0);
  font.setPointSizeF(point_size_);
  QApplication::setFont(font);

  auto* translator = new QTranslator(qApp);
  if (translator->load(QStringLiteral("qtbase_ja"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(translator);
  }
}

void Look::Apply(Theme theme, int32_t font_percent) const {
  const bool is_dark = theme == Theme::kDark || (theme == Theme::kSystem && is_desktop_dark_);
  QApplication::setPalette(PaletteOf(is_dark));
  QFont font = QApplication::font();
  font.setPointSizeF(point_size_ * std::clamp(font_percent, 75, 200) / 100);
  QApplication::setFont(font);
}

QString IconPath() { return QStringLiteral(":/orin/orin.svg"); }

}  // namespace orin::widgets
