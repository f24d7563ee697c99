#pragma once
// The form kies_drukker: where a report goes. Thin: every button calls the behaviour class
// PrintTarget and the form shows its values again.

#include <QDialog>
#include <functional>

#include "reports/print_target.h"

class QLabel;
class QPushButton;

namespace korvel::reports {

class PrintTargetForm : public QDialog {
    Q_OBJECT
  public:
    PrintTargetForm(PrintTarget& behaviour, QWidget* parent = nullptr);

    QPushButton* druk_ok = nullptr;
    QPushButton* druk_stop = nullptr;
    QPushButton* druk_wysig = nullptr;
    QPushButton* kies_kleur = nullptr;
    QPushButton* kies_mono = nullptr;
    QPushButton* kies_excel = nullptr;
    QPushButton* kies_html = nullptr;
    QLabel* drukwerk_naam = nullptr;
    QLabel* drukker_naam = nullptr;

  protected:
    void reject() override;

  private:
    // Shows the behaviour's values; closes the form when the behaviour has.
    void refresh();
    void bind(QPushButton* button, std::function<void()> event);

    PrintTarget& behaviour_;
};

}  // namespace korvel::reports
