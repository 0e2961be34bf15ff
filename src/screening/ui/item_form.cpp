#include "screening/ui/item_form.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "analysis/items/item_suggestions.h"
#include "indicators/indicator.h"
#include "widgets/manual_form.h"
#include "widgets/qt_text.h"

namespace orin::screening {

using analysis::SeriesForm;
using widgets::Text;
using widgets::Utf8;

namespace {

constexpr std::array kFormNames = {"日足", "週足", "月足", "第二銘柄"};
constexpr int kEarliestOffset = -9999;

/// The titles, each once, in the order of the catalogue.
QStringList FamilyTitles() {
  QStringList titles;
  for (const analysis::ItemGroup& group : analysis::ItemGroups()) {
    const QString title = Text(group.title);
    if (!titles.contains(title)) titles.append(title);
  }
  return titles;
}

bool EndsInOffset(const analysis::FoundItem& item) {
  return item.entry->family->ending == analysis::ItemFamily::Ending::kOffset;
}

}  // namespace

koumoku_Form::koumoku_Form(QWidget* owner)
    : QDialog(owner),
      families_(new QListWidget(this)),
      forms_(new QComboBox(this)),
      search_(new QLineEdit(this)),
      items_(new QListWidget(this)),
      arguments_(new QFormLayout),
      call_(new QLabel(this)) {
  setWindowTitle(QStringLiteral("分析項目の挿入"));
  setProperty("helpPage", QStringLiteral("condition_editor"));
  widgets::OpenManualWithF1(this);
  families_->addItems(FamilyTitles());
  families_->setAccessibleName(QStringLiteral("分類"));
  for (const char* name : kFormNames) forms_->addItem(Text(name));
  forms_->setAccessibleName(QStringLiteral("足"));
  items_->setAccessibleName(QStringLiteral("項目"));
  search_->setPlaceholderText(QStringLiteral("名前か読みで探す"));
  search_->setAccessibleName(QStringLiteral("項目を探す"));
  search_->setClearButtonEnabled(true);
  QFont bold = font();
  bold.setBold(true);
  call_->setFont(bold);
  call_->setTextInteractionFlags(Qt::TextSelectableByMouse);

  auto* left = new QVBoxLayout;
  left->addWidget(new QLabel(QStringLiteral("分類"), this));
  left->addWidget(families_);
  auto* middle = new QVBoxLayout;
  middle->addWidget(forms_);
  middle->addWidget(search_);
  middle->addWidget(items_);
  auto* right = new QVBoxLayout;
  right->addLayout(arguments_);
  right->addStretch();
  auto* columns = new QHBoxLayout;
  columns->addLayout(left, 1);
  columns->addLayout(middle, 2);
  columns->addLayout(right, 2);
  auto* buttons = new QDialogButtonBox(this);
  insert_ = buttons->addButton(QStringLiteral("挿入(&I)"), QDialogButtonBox::AcceptRole);
  buttons->addButton(QDialogButtonBox::Cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(columns);
  layout->addWidget(call_);
  layout->addWidget(buttons);
  resize(fontMetrics().averageCharWidth() * 80, fontMetrics().height() * 30);

  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(families_, &QListWidget::currentRowChanged, this, &koumoku_Form::FillItems);
  connect(forms_, &QComboBox::currentIndexChanged, this, &koumoku_Form::FillItems);
  connect(search_, &QLineEdit::textChanged, this, &koumoku_Form::FillItems);
  connect(items_, &QListWidget::currentRowChanged, this, &koumoku_Form::ShowArguments);
  connect(items_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
  families_->setCurrentRow(0);
}

SeriesForm koumoku_Form::Form() const {
  return analysis::kAllForms.at(static_cast<size_t>(std::max(0, forms_->currentIndex())));
}

const analysis::FoundItem* koumoku_Form::Chosen() const {
  const int row = items_->currentRow();
  if (row < 0 || row >= static_cast<int>(listed_.size())) return nullptr;
  return &listed_[static_cast<size_t>(row)];
}

void koumoku_Form::FillItems() {
  const std::string_view before = Chosen() != nullptr ? Chosen()->entry->name : "";
  listed_.clear();
  const std::string word = Utf8(search_->text().trimmed());
  const QString family =
      families_->currentItem() != nullptr ? families_->currentItem()->text() : "";
  if (!word.empty()) {
    // A word is looked for in all families.
    for (const auto& suggestion : analysis::SuggestItems(word, 1000)) {
      if (suggestion.item.form == Form()) listed_.push_back(suggestion.item);
    }
  } else {
    for (const analysis::ItemGroup& group : analysis::ItemGroups()) {
      if (Text(group.title) != family) continue;
      for (const analysis::ItemEntry& entry : group.rows) {
        if (entry.HasForm(Form())) listed_.push_back({&entry, Form()});
      }
    }
  }
  items_->clear();
  int row = 0;
  for (const analysis::FoundItem& item : listed_) {
    if (item.entry->name == before) row = items_->count();
    items_->addItem(Text(ShownName(*item.entry, item.form)));
  }
  items_->setCurrentRow(listed_.empty() ? -1 : row);
  if (listed_.empty()) ShowArguments();
}

void koumoku_Form::ShowArguments() {
  while (arguments_->rowCount() > 0) arguments_->removeRow(0);
  boxes_.clear();
  const analysis::FoundItem* item = Chosen();
  if (item != nullptr) {
    const auto usual = analysis::UsualArguments(*item->entry, item->form);
    const auto labels = ArgumentLabels(*item->entry, item->form);
    analysis::BoundItem bound;
    bound.entry = item->entry;
    bound.indicator = indicators::FindIndicator(item->entry->indicator);
    const size_t parameters = item->entry->ParameterCount();
    for (size_t i = 0; i < parameters + (EndsInOffset(*item) ? 1 : 0); ++i) {
      auto* box = new QSpinBox(this);
      if (i < parameters) {
        const analysis::ArgumentLimits limits = bound.LimitsOf(i);
        box->setRange(limits.minimum, limits.maximum);
        box->setValue(usual.at(i));
      } else {
        box->setRange(kEarliestOffset, 0);
        box->setValue(0);
      }
      auto* label = new QLabel(Text(labels[i]), this);
      label->setWordWrap(true);
      label->setBuddy(box);
      connect(box, &QSpinBox::valueChanged, this, &koumoku_Form::ShowCall);
      arguments_->addRow(label);
      arguments_->addRow(box);
      boxes_.push_back(box);
    }
  }
  ShowCall();
}

std::array<int32_t, analysis::kMaximumItemArguments> koumoku_Form::Arguments() const {
  std::array<int32_t, analysis::kMaximumItemArguments> arguments = {};
  const size_t parameters = Chosen()->entry->ParameterCount();
  for (size_t i = 0; i < parameters; ++i) arguments.at(i) = boxes_[i]->value();
  return arguments;
}

std::string koumoku_Form::Call() const {
  const analysis::FoundItem* item = Chosen();
  if (item == nullptr) return {};
  const int32_t offset = EndsInOffset(*item) ? boxes_.back()->value() : 0;
  return CallText(*item->entry, item->form, Arguments(), offset);
}

void koumoku_Form::ShowCall() {
  const analysis::FoundItem* item = Chosen();
  if (item != nullptr && EndsInOffset(*item)) {
    boxes_.back()->setMaximum(NewestOffset(*item->entry, item->form, Arguments()));
  }
  const std::string call = Call();
  call_->setText(call.empty() ? QStringLiteral("項目がありません。") : Text(call));
  insert_->setEnabled(!call.empty());
}

void koumoku_Form::ShowItem(const std::string& name) {
  const analysis::FoundItem found = analysis::FindItem(name);
  if (found.entry == nullptr) return;
  forms_->setCurrentIndex(static_cast<int>(found.form));
  for (const analysis::ItemGroup& group : analysis::ItemGroups()) {
    for (const analysis::ItemEntry& entry : group.rows) {
      if (entry.name != found.entry->name) continue;
      const auto families = families_->findItems(Text(group.title), Qt::MatchExactly);
      if (!families.isEmpty()) families_->setCurrentItem(families.front());
    }
  }
  for (size_t i = 0; i < listed_.size(); ++i) {
    if (listed_[i].entry->name == found.entry->name) items_->setCurrentRow(static_cast<int>(i));
  }
}

}  // namespace orin::screening
