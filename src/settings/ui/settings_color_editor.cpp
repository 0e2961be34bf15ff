#include "settings/ui/settings_color_editor.h"

#include <QColorDialog>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <array>
#include <memory>

#include "settings/palette.h"
#include "widgets/qt_text.h"

namespace orin::settings {

namespace {

struct NamedColor {
  const char* number;
  const char* name;
};

constexpr std::array kNamedColors = {
    NamedColor{kBlack, "黒"},        NamedColor{kNavy, "紺"},
    NamedColor{kGreen, "緑"},        NamedColor{kTeal, "青緑"},
    NamedColor{kMaroon, "えび茶"},   NamedColor{kPurple, "紫"},
    NamedColor{kOlive, "オリーブ"},  NamedColor{kSilver, "銀"},
    NamedColor{kGray, "灰色"},       NamedColor{kLightBlue, "青"},
    NamedColor{kLightGreen, "黄緑"}, NamedColor{kLightCyan, "水色"},
    NamedColor{kLightRed, "赤"},     NamedColor{kLightMagenta, "赤紫"},
    NamedColor{kYellow, "黄"},       NamedColor{kWhite, "白"},
};

base::Color ColorOf(const QString& number) { return base::Color::FromNumber(number.toInt()); }

/// The name, or red, green and blue where it is none of the sixteen, and the number that the
/// settings file has.
QString Caption(base::Color color) {
  const QString number = QString::number(color.Number());
  const auto* named = std::ranges::find(
      kNamedColors, number, [](const NamedColor& row) { return QString::fromLatin1(row.number); });
  if (named != kNamedColors.end()) {
    return QStringLiteral("%1（%2）").arg(QString::fromUtf8(named->name), number);
  }
  return QStringLiteral("%1, %2, %3（%4）")
      .arg(color.red)
      .arg(color.green)
      .arg(color.blue)
      .arg(number);
}

constexpr int SwatchWidth(int height) { return height * 3 / 2; }

QIcon Swatch(base::Color color, const QWidget* widget) {
  const int side = widget->fontMetrics().height();
  const qreal ratio = widget->devicePixelRatioF();
  QPixmap pixmap(QSize(SwatchWidth(side), side) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(ScreenColor(color));
  QPainter painter(&pixmap);
  painter.setPen(widget->palette().color(QPalette::ButtonText));
  painter.drawRect(QRectF(0.5, 0.5, SwatchWidth(side) - 1, side - 1));
  return QIcon(pixmap);
}

}  // namespace

ColorEditor::ColorEditor(const SettingEntry& entry)
    : SettingEditor(entry), button_(new QPushButton) {
  Adopt(button_);
  button_->setAutoDefault(false);
  connect(button_, &QPushButton::clicked, this, &ColorEditor::Color_Click);
}

void ColorEditor::ShowText(const QString& text) {
  color_ = ColorOf(text);
  ShowColor();
}

void ColorEditor::ShowColor() {
  const int side = fontMetrics().height();
  button_->setIconSize({SwatchWidth(side), side});
  button_->setIcon(Swatch(color_, this));
  button_->setText(Caption(color_));
  button_->setAccessibleName(
      QStringLiteral("%1（%2）：%3")
          .arg(widgets::Text(Entry().label), widgets::Text(Entry().heading), Caption(color_)));
}

void ColorEditor::Choose(base::Color color) {
  color_ = color;
  ShowColor();
  Q_EMIT Edited(QString::number(color.Number()));
}

void ColorEditor::Color_Click() {
  QMenu menu(this);
  QAction* current = nullptr;
  for (const NamedColor& row : kNamedColors) {
    const base::Color color = ColorOf(QString::fromLatin1(row.number));
    QAction* action = menu.addAction(Swatch(color, this), QString::fromUtf8(row.name));
    action->setIconVisibleInMenu(true);
    action->setData(color.Number());
    if (color == color_) current = action;
  }
  menu.addSeparator();
  QAction* other = menu.addAction(QStringLiteral("その他の色(&O)…"));
  menu.setActiveAction(current != nullptr ? current : other);
  const QAction* chosen = menu.exec(button_->mapToGlobal(button_->rect().bottomLeft()));
  if (chosen == nullptr) return;
  if (chosen != other) {
    Choose(base::Color::FromNumber(chosen->data().toInt()));
    return;
  }
  // The toolkit's own dialog speaks Japanese on every desktop.
  const QColor color = QColorDialog::getColor(
      ScreenColor(color_), this, widgets::Text(Entry().label), QColorDialog::DontUseNativeDialog);
  if (!color.isValid()) return;
  Choose({static_cast<uint8_t>(color.red()), static_cast<uint8_t>(color.green()),
          static_cast<uint8_t>(color.blue())});
}

}  // namespace orin::settings
