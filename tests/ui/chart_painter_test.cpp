#include <QImage>
#include <QPrinter>
#include <QRegion>
#include <QTest>
#include <cstdlib>
#include <gtest/gtest.h>
#include <set>

#include "chart/chart.h"
#include "chart/ink_mode.h"
#include "chart/layout.h"
#include "chart/text_width.h"
#include "chart/ui/chart_view.h"
#include "chart_fixture.h"
#include "painting/picture_encoding.h"
#include "painting/picture_painter.h"
#include "support/scratch_directory.h"
#include "support/test_files.h"
#include "widgets/qt_text.h"

namespace orin::chart {
namespace {

using store::BarPeriod;

class ChartPictures : public testing::Test {
 protected:
  Chart Build(const ChartOptions& options, BarPeriod period, int32_t bars) {
    sources_.push_back(std::make_unique<ChartSource>(
        store_, store_.Master().Stock(base::MasterRecord(3)),
        &store_.Master().Stock(base::MasterRecord(2)), true, period, store_.Days().Last()));
    const int32_t last = sources_.back()->Bars().Count();
    return BuildChart(*sources_.back(), settings_, options, {last - bars + 1, last, 3});
  }

  store::StockStore store_ = RealMarket("pictures");
  settings::Settings settings_ = DefaultSettings();
  std::vector<std::unique_ptr<ChartSource>> sources_;
};

std::vector<const SubChart*> Named(std::initializer_list<const char*> keys, BarPeriod period) {
  std::vector<const SubChart*> charts;
  for (const char* key : keys) charts.push_back(FindSubChart(key, period));
  return charts;
}

QImage Painted(const DrawList& picture) {
  QImage image(picture.width, picture.height, QImage::Format_RGB32);
  QPainter painter(&image);
  painting::PaintPicture(painter, picture);
  return image;
}

/// Where the texts of a picture stand; other machines have other letters.
QRegion TextsOf(const DrawList& picture) {
  QRegion region;
  for (const DrawItem& item : picture.items) {
    const auto* label = std::get_if<Label>(&item);
    if (label == nullptr) continue;
    const double width = TextWidth(label->text) * label->size * 1.2;
    const double left = label->at.x - (label->align == Align::kLeft    ? 0
                                       : label->align == Align::kRight ? width
                                                                       : width / 2);
    region +=
        QRectF(left - 2, label->at.y - label->size, width + 4, 2 * label->size).toAlignedRect();
  }
  return region;
}

bool LookDifferent(QRgb one, QRgb other) {
  constexpr int kSeen = 60;
  return std::abs(qRed(one) - qRed(other)) > kSeen ||
         std::abs(qGreen(one) - qGreen(other)) > kSeen ||
         std::abs(qBlue(one) - qBlue(other)) > kSeen;
}

/// Pixels outside `ignored` that look different, in parts of all.
double Difference(const QImage& one, const QImage& other, const QRegion& ignored = {}) {
  if (one.size() != other.size()) return 1;
  int64_t different = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      if (!LookDifferent(one.pixel(x, y), other.pixel(x, y))) continue;
      different += ignored.contains(QPoint(x, y)) ? 0 : 1;
    }
  }
  return static_cast<double>(different) / (one.width() * one.height());
}

/// Compares with tests/data/chart; ORIN_WRITE_EXPECTED in the environment writes it anew. Every
/// text must be there, whatever its letters look like.
void ExpectAsStored(const char* name, const DrawList& picture) {
  const QImage image = Painted(picture);
  const std::string path = support::TestData(std::string("chart/") + name + ".png");
  const QString file = QString::fromStdString(path);
  const bool is_written = std::getenv("ORIN_WRITE_EXPECTED") == nullptr || image.save(file);
  ASSERT_TRUE(is_written);
  EXPECT_LT(Difference(image, QImage(file), TextsOf(picture)), 0.0005) << name;
  for (const DrawItem& item : picture.items) {
    if (!std::holds_alternative<Label>(item)) continue;
    DrawList alone{picture.width, picture.height, picture.ground, {item}};
    const DrawList nothing{picture.width, picture.height, picture.ground, {}};
    EXPECT_GT(Difference(Painted(alone), Painted(nothing)), 0) << std::get<Label>(item).text;
  }
}

TEST_F(ChartPictures, AreTheOnesLookedAt) {
  ChartOptions options;
  options.sub_charts = Named({"volume", "rsi", "ichimoku"}, BarPeriod::kDay);
  ExpectAsStored("dark_day", LayOut(Build(options, BarPeriod::kDay, 90), {480, 420, 1}).picture);
  options.theme = ChartTheme::kLight;
  options.main.volume = VolumePlace::kNone;
  options.sub_charts = Named({"kagi", "correlation"}, BarPeriod::kWeek);
  ExpectAsStored("light_week",
                 LayOut(Build(options, BarPeriod::kWeek, 120), {480, 420, 1}).picture);
  options.sub_charts = Named({"volume", "bollinger"}, BarPeriod::kMonth);
  ExpectAsStored("pattern_month",
                 InMode(LayOut(Build(options, BarPeriod::kMonth, 40), {480, 420, 1}).picture,
                        InkMode::kPattern));
}

TEST_F(ChartPictures, BoxesAndHairlinesAreCrispAtEveryScale) {
  ChartOptions options;
  options.sub_charts = Named({"volume", "rsi"}, BarPeriod::kDay);
  const Chart chart = Build(options, BarPeriod::kDay, 80);
  for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
    const PictureSize size{static_cast<int32_t>(500 * scale), static_cast<int32_t>(400 * scale),
                           scale};
    DrawList picture = LayOut(chart, size).picture;
    std::set<QRgb> inks = {
        qRgb(picture.ground.color.red, picture.ground.color.green, picture.ground.color.blue)};
    std::vector<DrawItem> boxes;
    int32_t thinnest = 100;
    for (const DrawItem& item : picture.items) {
      const auto* drawn = std::get_if<Boxes>(&item);
      if (drawn == nullptr) continue;
      boxes.push_back(item);
      inks.insert(qRgb(drawn->ink.color.red, drawn->ink.color.green, drawn->ink.color.blue));
      if (drawn->ink.role != InkRole::kFaint) continue;
      for (const Rect& rect : drawn->rects) {
        thinnest = std::min({thinnest, rect.width, rect.height});
      }
    }
    EXPECT_EQ(thinnest, static_cast<int32_t>(scale));
    picture.items = boxes;
    const QImage image = Painted(picture);
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        ASSERT_TRUE(inks.contains(image.pixel(x, y))) << scale << ": " << x << ", " << y;
      }
    }
  }
}

TEST_F(ChartPictures, WidgetIsLaidOutForThePixelsOfItsScreen) {
  const Chart chart = Build({}, BarPeriod::kDay, 80);
  ChartView view(nullptr);
  view.resize(400, 300);
  for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
    const PictureSize size{static_cast<int32_t>(400 * scale), static_cast<int32_t>(300 * scale),
                           scale};
    view.Show(chart, {255, 255, 255});
    QImage screen(size.width, size.height, QImage::Format_RGB32);
    screen.setDevicePixelRatio(scale);
    view.render(&screen);
    screen.setDevicePixelRatio(1);
    EXPECT_EQ(Difference(screen, Painted(LayOut(chart, size).picture)), 0) << scale;
  }
}

TEST_F(ChartPictures, PointerMovesCrossHairAndReadout) {
  const Chart chart = Build({}, BarPeriod::kDay, 80);
  ChartView view(nullptr);
  view.resize(600, 400);
  view.Show(chart, {255, 255, 255});
  view.show();
  const QImage before = view.grab().toImage();
  const ChartLayout layout = LayOut(chart, {600, 400, 1});
  const QPointF place(layout.panes[0].bars.X(chart.view.last - 3), 120);
  QPointF moved_to;
  QObject::connect(&view, &ChartView::PointerMoved, [&](QPointF position) { moved_to = position; });
  QTest::mouseMove(&view, place.toPoint());
  QTest::qWait(10);
  ASSERT_EQ(moved_to.toPoint(), place.toPoint());
  ASSERT_FALSE(view.ReadoutOf(moved_to).empty());
  EXPECT_EQ(view.ReadoutOf(moved_to)[0].value, chart.bars.DateOf(chart.view.last - 3).ToText());
  EXPECT_GT(Difference(view.grab().toImage(), before), 0.0005);
  view.Clear();
  EXPECT_TRUE(view.ReadoutOf(moved_to).empty());
  view.grab();
}

TEST_F(ChartPictures, FilesAndPagesArePainted) {
  const Chart chart = Build({}, BarPeriod::kDay, 80);
  const DrawList picture = LayOut(chart, {500, 400, 1}).picture;
  const auto png = painting::EncodePicture(picture, 1, PictureFormat::kPng);
  ASSERT_TRUE(png);
  EXPECT_EQ(Difference(QImage::fromData(*png), Painted(picture)), 0);
  const auto svg = painting::EncodePicture(picture, 1, PictureFormat::kSvg);
  ASSERT_TRUE(svg);
  EXPECT_TRUE(svg->contains(QStringLiteral(">銘柄：</text>").toUtf8()));
  EXPECT_TRUE(painting::EncodePicture(picture, 1, PictureFormat::kPdf)->startsWith("%PDF"));
  EXPECT_FALSE(painting::EncodePicture({2'000'000'000, 1, {}, {}}, 1, PictureFormat::kPng));

  const support::ScratchDirectory directory;
  QPrinter printer(QPrinter::HighResolution);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(widgets::PathOf(directory / "page.pdf"));
  const PictureSize size = painting::PageSize(printer);
  EXPECT_GT(size.scale, 2);
  EXPECT_TRUE(painting::PaintPage(printer, InMode(LayOut(chart, size).picture, InkMode::kGrey)));
  EXPECT_GT(std::filesystem::file_size(directory / "page.pdf"), 5000U);
}

}  // namespace
}  // namespace orin::chart
