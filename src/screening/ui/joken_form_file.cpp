#include <QCloseEvent>
#include <utility>

#include "screening/screening_run.h"
#include "screening/ui/joken_form.h"
#include "widgets/qt_text.h"

// The analysis file of the condition editor: opening, saving, closing.

namespace orin::screening {

namespace fs = std::filesystem;
using widgets::PathOf;
using widgets::Utf8;

namespace {

constexpr const char* kFilter = "株価分析ファイル|*.txt|";

}  // namespace

base::Status joken_Form::Open(const fs::path& file) {
  auto document = AnalysisDocument::Read(file);
  if (!document) return base::Forward(document);
  document_ = std::move(*document);
  file_ = file;
  ShowDocument();
  return {};
}

void joken_Form::New() {
  document_ = AnalysisDocument();
  file_.clear();
  ShowDocument();
}

void joken_Form::ShowDocument() {
  fields_->Show(document_.Fields());
  editor_->SetCondition(document_.Fields().condition);
  ShowName();
}

QString joken_Form::Name() const {
  return file_.empty() ? QStringLiteral("新しい条件") : PathOf(file_.filename());
}

void joken_Form::ShowName() {
  setWindowTitle(QStringLiteral("条件エディター（%1）[*]").arg(Name()));
  setWindowModified(IsChanged());
}

bool joken_Form::IsChanged() const {
  AnalysisFields shown = fields_->Fields();
  shown.condition = document_.Fields().condition;
  return editor_->document()->isModified() || shown != document_.Fields();
}

AnalysisFields joken_Form::Fields() const {
  AnalysisFields fields = fields_->Fields();
  // A condition that has not changed keeps the lines it has in the file, however long they are.
  fields.condition =
      editor_->document()->isModified() ? editor_->Lines() : document_.Fields().condition;
  return fields;
}

bool joken_Form::SaveTo(const fs::path& file) {
  const auto saved = document_.Save(*state_.files, file, Fields());
  if (!saved) {
    messages_.Warn(saved.error().message);
    return false;
  }
  file_ = file;
  editor_->document()->setModified(false);
  ShowName();
  status_->setText(QStringLiteral("%1 に保存しました。").arg(PathOf(file)));
  // What is saved may still be no analysis that runs.
  const auto analysis = ReadAnalysisFile(file);
  if (!analysis) messages_.Warn(analysis.error().message);
  Q_EMIT Saved(PathOf(file));
  return true;
}

bool joken_Form::mnu_save_Click() { return file_.empty() ? mnu_saveas_Click() : SaveTo(file_); }

bool joken_Form::mnu_saveas_Click() {
  std::string name = fields_->Fields().title;
  std::erase_if(name, [](char c) { return c == '/' || c == '\\'; });
  if (name.empty()) name = "新しい条件";
  const auto file = messages_.ChooseFile(
      {.caption = "株価分析ファイルを指定する",
       .filter = kFilter,
       .start =
           file_.empty() ? state_.places.program_directory / "analysis" / (name + ".txt") : file_,
       .choice = base::FileChoice::kSave});
  return file && SaveTo(*file);
}

void joken_Form::closeEvent(QCloseEvent* event) {
  if (IsChanged()) {
    const base::Answer answer =
        messages_.Show({.text = Utf8(QStringLiteral("「%1」は変更されています。保存しますか？\n"
                                                    "はい　　　：保存して閉じます。\n"
                                                    "いいえ　　：保存しないで閉じます。\n"
                                                    "キャンセル：閉じません。")
                                         .arg(Name())),
                        .icon = base::Icon::kQuestion,
                        .buttons = base::Buttons::kYesNoCancel,
                        .default_answer = base::Answer::kYes});
    const bool may_close =
        answer == base::Answer::kNo || (answer == base::Answer::kYes && mnu_save_Click());
    if (!may_close) {
      event->ignore();
      return;
    }
  }
  count_.Stop();
  event->accept();
}

}  // namespace orin::screening
