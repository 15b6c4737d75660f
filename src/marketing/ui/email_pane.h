// The e-mail of tab 4.

#pragma once

#include <QWidget>
#include <memory>

#include "marketing/ui/template_pane.h"

namespace Ui {
class EmailPane;
}

namespace qbx {

/// Subject and body, previewed with the sample customer and with the rows of the next run. The shown message can be
/// sent as a test.
class EmailPane : public TemplatePane {
  Q_OBJECT

 public:
  explicit EmailPane(QWidget* parent = nullptr);
  ~EmailPane() override;

  void ShowNotes(const NoteFacts& facts) override;
  void HidePreview() override;
  void FollowRows() override;
  void FollowText() override;

 protected:
  void Connect() override;
  void CopyState() override;

 private:
  void Preview();
  void ShowMessage();

  std::unique_ptr<Ui::EmailPane> ui_;
};

}  // namespace qbx
