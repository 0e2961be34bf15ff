#include "widgets/look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QPalette>
#include <QStyleFactory>
#include <QTranslator>
#include <algorithm>
#include <array>

namespace orin::widgets {

namespace {

constexpr std::array kFamilies = {"Noto Sans CJK JP", "Noto Sans JP", "IPAexGothic",
                                  "IPAPGothic",       "IPAGothic",    "Takao Pゴシック",
                                  "VL PGothic"};

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
