#include "chart/draw_list_bytes.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "base/coding.h"
#include "chart/picture_format.h"

namespace orin::chart {

namespace {

constexpr std::string_view kMark = "ODL1";
// Layouts place nothing further off than 10^6 pixels.
constexpr double kFarthest = 1e7;
constexpr size_t kLeastItem = 13;         // bytes of a surface without points
constexpr double kLargestMeasure = 1000;  // of lines, marks and letters

// Writer and Reader take the fields of a draw list in the same order: `Of<T>` is what they take
// them from, or put them into.

class Writer {
 public:
  template <typename T>
  using Of = const T;

  void Byte(uint8_t value) { bytes_ += static_cast<char>(value); }
  template <typename T>
  void Choice(T value, T /*last*/) {
    Byte(static_cast<uint8_t>(value));
  }
  void Integer(int32_t value) { Length(static_cast<uint32_t>(value)); }
  void Coordinate(double value) {
    std::array<char, sizeof value> place;
    base::PutDouble(place.data(), value);
    bytes_.append(place.data(), place.size());
  }
  void Measure(double value) { Coordinate(value); }
  void Text(std::string_view text) {
    Length(static_cast<uint32_t>(text.size()));
    bytes_ += text;
  }
  /// Calls each(element) for every element.
  template <typename T, typename Each>
  void List(const std::vector<T>& list, size_t /*least_length*/, Each each) {
    Length(static_cast<uint32_t>(list.size()));
    for (const T& element : list) each(element);
  }
  void Mark() { bytes_ += kMark; }
  void Item(const DrawItem& item) { Byte(static_cast<uint8_t>(item.index())); }

  std::string Take() { return std::move(bytes_); }

 private:
  void Length(uint32_t value) {
    std::array<char, sizeof value> place;
    base::PutUint32(place.data(), value);
    bytes_.append(place.data(), place.size());
  }

  std::string bytes_;
};

template <size_t... kKinds>
void EmplaceKind(DrawItem& item, size_t kind, std::index_sequence<kKinds...> /*kinds*/) {
  ((kind == kKinds ? static_cast<void>(item.emplace<kKinds>()) : void()), ...);
}

/// Once something is wrong, it takes no further byte and leaves what it is given as it was.
class Reader {
 public:
  template <typename T>
  using Of = T;

  explicit Reader(std::string_view bytes) : bytes_(bytes) {}

  void Byte(uint8_t& value) {
    if (const char* from = Next(1)) value = static_cast<uint8_t>(*from);
  }
  template <typename T>
  void Choice(T& value, T last) {
    uint8_t number = 0;
    Byte(number);
    Require(number <= static_cast<uint8_t>(last));
    if (is_good_) value = static_cast<T>(number);
  }
  void Integer(int32_t& value) {
    value = static_cast<int32_t>(Length());
    Require(std::abs(static_cast<double>(value)) <= kFarthest);
  }
  void Coordinate(double& value) {
    if (const char* from = Next(sizeof value)) value = base::GetDouble(from);
    // What is no number compares with nothing.
    Require(std::abs(value) <= kFarthest);
  }
  void Measure(double& value) {
    Coordinate(value);
    Require(value >= 0 && value <= kLargestMeasure);
  }
  void Text(std::string& text) {
    const uint32_t length = Length();
    if (const char* from = Next(length)) text.assign(from, length);
  }
  /// An element takes at least `least_length` bytes: a count beyond that reserves no memory.
  template <typename T, typename Each>
  void List(std::vector<T>& list, size_t least_length, Each each) {
    const uint32_t count = Length();
    Require(count <= bytes_.size() / least_length);
    if (!is_good_) return;
    list.resize(count);
    for (T& element : list) {
      if (is_good_) each(element);
    }
  }
  void Mark() {
    const char* from = Next(kMark.size());
    Require(from != nullptr && std::string_view(from, kMark.size()) == kMark);
  }
  void Item(DrawItem& item) {
    uint8_t kind = 0;
    Byte(kind);
    Require(kind < std::variant_size_v<DrawItem>);
    EmplaceKind(item, kind, std::make_index_sequence<std::variant_size_v<DrawItem>>());
  }

  void Require(bool condition) { is_good_ = is_good_ && condition; }
  /// Whether all was right and nothing is left.
  [[nodiscard]] bool IsDone() const { return is_good_ && bytes_.empty(); }

 private:
  /// The next bytes; null where there are not as many.
  const char* Next(size_t length) {
    Require(length <= bytes_.size());
    if (!is_good_) return nullptr;
    const char* next = bytes_.data();
    bytes_.remove_prefix(length);
    return next;
  }
  uint32_t Length() {
    const char* from = Next(sizeof(uint32_t));
    return from != nullptr ? base::GetUint32(from) : 0;
  }

  std::string_view bytes_;
  bool is_good_ = true;
};

template <typename Bytes>
void PassInk(Bytes& bytes, typename Bytes::template Of<Ink>& ink) {
  bytes.Byte(ink.color.red);
  bytes.Byte(ink.color.green);
  bytes.Byte(ink.color.blue);
  bytes.Choice(ink.role, InkRole::kSeries);
  bytes.Byte(ink.number);
  bytes.Byte(ink.alpha);
  bytes.Choice(ink.dash, Dash::kDashDotDot);
  bytes.Choice(ink.hatch, Hatch::kVertical);
}

template <typename Bytes>
void PassPoint(Bytes& bytes, typename Bytes::template Of<Point>& point) {
  bytes.Coordinate(point.x);
  bytes.Coordinate(point.y);
}

template <typename Bytes>
void PassRect(Bytes& bytes, typename Bytes::template Of<Rect>& rect) {
  bytes.Integer(rect.left);
  bytes.Integer(rect.top);
  bytes.Integer(rect.width);
  bytes.Integer(rect.height);
}

template <typename Bytes>
void PassPoints(Bytes& bytes, typename Bytes::template Of<std::vector<Point>>& points) {
  bytes.List(points, 16, [&bytes](auto& point) { PassPoint(bytes, point); });
}

template <typename Bytes>
void PassRects(Bytes& bytes, typename Bytes::template Of<std::vector<Rect>>& rects) {
  bytes.List(rects, 16, [&bytes](auto& rect) { PassRect(bytes, rect); });
}

/// What stands behind the kind of an item.
template <typename Bytes>
class ItemPasser {
 public:
  explicit ItemPasser(Bytes& bytes) : bytes_(bytes) {}

  void operator()(typename Bytes::template Of<Boxes>& boxes) {
    PassInk(bytes_, boxes.ink);
    PassRects(bytes_, boxes.rects);
  }
  void operator()(typename Bytes::template Of<Frames>& frames) {
    PassInk(bytes_, frames.ink);
    bytes_.Integer(frames.width);
    PassRects(bytes_, frames.rects);
  }
  void operator()(typename Bytes::template Of<Line>& line) {
    PassInk(bytes_, line.ink);
    bytes_.Measure(line.width);
    PassPoints(bytes_, line.points);
  }
  void operator()(typename Bytes::template Of<Surface>& surface) {
    PassInk(bytes_, surface.ink);
    PassPoints(bytes_, surface.points);
  }
  void operator()(typename Bytes::template Of<Marks>& marks) {
    PassInk(bytes_, marks.ink);
    bytes_.Choice(marks.shape, MarkShape::kCross);
    bytes_.Measure(marks.radius);
    bytes_.Measure(marks.width);
    PassPoints(bytes_, marks.points);
  }
  void operator()(typename Bytes::template Of<Label>& label) {
    PassInk(bytes_, label.ink);
    PassPoint(bytes_, label.at);
    bytes_.Choice(label.align, Align::kRight);
    bytes_.Measure(label.size);
    bytes_.Text(label.text);
  }
  void operator()(typename Bytes::template Of<Clip>& clip) { PassRect(bytes_, clip.rect); }

 private:
  Bytes& bytes_;
};

template <typename Bytes>
void PassPicture(Bytes& bytes, typename Bytes::template Of<DrawList>& picture) {
  bytes.Mark();
  bytes.Integer(picture.width);
  bytes.Integer(picture.height);
  PassInk(bytes, picture.ground);
  ItemPasser passer(bytes);
  bytes.List(picture.items, kLeastItem, [&bytes, &passer](auto& item) {
    bytes.Item(item);
    std::visit(passer, item);
  });
}

}  // namespace

std::string DrawListBytes(const DrawList& picture) {
  Writer writer;
  PassPicture(writer, picture);
  return writer.Take();
}

base::Result<DrawList> ReadDrawList(std::string_view bytes) {
  Reader reader(bytes);
  DrawList picture;
  PassPicture(reader, picture);
  if (!reader.IsDone()) return base::Fail("渡された図のデータが壊れています。");
  if (!IsPaintable(picture.width, picture.height)) {
    return base::Fail("渡された図の大きさ " + std::to_string(picture.width) + "x" +
                      std::to_string(picture.height) + " では描けません。");
  }
  return picture;
}

}  // namespace orin::chart
