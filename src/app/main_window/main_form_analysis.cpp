#include <memory>
#include <utility>

#include "app/main_window/main_form.h"
#include "screening/ui/columns_form.h"
#include "widgets/qt_text.h"

// Screening: the windows of analyses, conditions and results, and how they reach one another.

namespace orin::app {

screening::check2_Form* main_Form::AnalysisWindow() {
  for (screening::check2_Form* window : Windows<screening::check2_Form>()) {
    Activate(window);
    return window;
  }
  auto* window = new screening::check2_Form(
      state_, screen_.Questions(),
      {.save = [this](const settings::Settings& changed) { return Keep(changed); },
       .edit = [this](const std::filesystem::path& file) { EditAnalysis(file); },
       .show = [this](screening::ResultContent content) { ShowResult(std::move(content)); },
       .reload_store = [this] { ReloadStore(); },
       .fail = [this](const std::string& sentence) { Fail("株価分析", sentence); }});
  Add(window);
  return window;
}

void main_Form::mnu_check2_Click() { static_cast<void>(AnalysisWindow()); }

void main_Form::mnu_analysis_Click() { AnalysisWindow()->Command1_Click(); }

void main_Form::mnu_joken_Click() { EditAnalysis({}); }

void main_Form::mnu_result_Click() { AnalysisWindow()->mnu_openlist_Click(); }

void main_Form::EditAnalysis(const std::filesystem::path& file) {
  for (screening::joken_Form* window : Windows<screening::joken_Form>()) {
    if (file.empty() || window->File() != file) continue;
    Activate(window);
    return;
  }
  auto window = std::make_unique<screening::joken_Form>(state_, screen_.Questions());
  if (file.empty()) {
    window->New();
  } else if (const auto opened = window->Open(file); !opened) {
    Fail("条件エディター", opened.error().message);
    return;
  }
  connect(window.get(), &screening::joken_Form::Saved, this, [this](const QString& saved) {
    for (auto* analysis : Windows<screening::check2_Form>())
      analysis->TakeSaved(widgets::PathFrom(saved));
  });
  Add(window.release());
}

void main_Form::ShowResult(screening::ResultContent content) {
  auto* window = new screening::result_Form(
      state_, screen_.Questions(),
      {.others =
           [this] {
             std::vector<const screening::result_Form*> others;
             for (auto* other : Windows<screening::result_Form>()) others.push_back(other);
             return others;
           },
       .edit_columns = [this] { EditColumns(); },
       .show = [this](screening::ResultContent shown) { ShowResult(std::move(shown)); }},
      std::move(content));
  connect(window, &screening::result_Form::StockChosen, this, [this, window](const QString& code) {
    OpenCode(code, {widgets::Utf8(window->windowTitle()), window->Codes()});
  });
  Add(window);
}

void main_Form::EditColumns() {
  screening::columns_Form form(state_.settings.analysis_group.columns, this);
  if (form.exec() != QDialog::Accepted) return;
  settings::Settings changed = state_.settings;
  changed.analysis_group.columns = form.Chosen();
  if (changed == state_.settings) return;
  if (const auto kept = Keep(changed); !kept) screen_.Questions().Warn(kept.error().message);
  for (auto* window : Windows<screening::result_Form>()) window->Reload();
}

base::Status main_Form::Keep(const settings::Settings& changed) {
  state_.settings = changed;
  return Save(changed);
}

}  // namespace orin::app
