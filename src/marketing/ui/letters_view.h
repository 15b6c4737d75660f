// The progress of making letters.

#pragma once

#include <QProgressBar>

#include "diagnostics/status_box.h"
#include "letters/letter_run.h"

namespace qbx {

/// Moves a progress bar; the status box can cancel.
class LettersView final : public LetterObserver {
 public:
  LettersView(QProgressBar& bar, StatusBox& status) : bar_(bar), status_(status) {}

  void Begins(int total) override {
    bar_.setRange(0, total);
    bar_.setValue(0);
    bar_.show();
    status_.ShowStatus(QStringLiteral("Creating the letters"), true);
  }
  void Progress(int done) override { bar_.setValue(done); }
  void Ends() override {
    status_.Close();
    bar_.hide();
  }
  bool Cancelled() override { return status_.Cancelled(); }

 private:
  QProgressBar& bar_;
  StatusBox& status_;
};

}  // namespace qbx
