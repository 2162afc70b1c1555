// Batch mode of the print menu: the dialog is loaded but never shown; the
// batch options act on its controls as the user's clicks would, and its own
// confirm handler decides, so a refused choice leaves its message in the
// transcript exactly as the dialog would have shown it.
#include "startup/frmPrintMenu.h"

#include <QCheckBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStringList>

namespace kelvary {
namespace {

// A click only where the user could click: a control the menu has made
// unavailable keeps its state.
void clickTo(QAbstractButton* button, bool checked) {
    if (button->isChecked() != checked) button->click();
}

}  // namespace

bool frmPrintMenu::runBatch(const BatchOptions& options) {
    Load();
    if (options.course == QStringLiteral("1")) clickTo(fldCourseNumber1_, true);
    else if (options.course == QStringLiteral("3")) clickTo(fldCourseNumber3_, true);
    applyBatchPeriods(options.periods);
    if (options.proxy) clickTo(fldProxy_, true);
    if (options.sendResult) clickTo(fldSendResult_, true);
    if (options.noApplication) clickTo(fldPrintAPData_, false);
    if (options.noStatements) clickTo(fldPrintZaimuQR_, false);

    // There is no second try in batch mode: unless the confirmation goes
    // through, the run is cancelled.
    mblnCancel = true;
    cmdPrint_->click();
    return !mblnCancel;
}

// newest | all | none | N[,N...], positions in the list from 1 (newest
// first). Positions past the end of the list name no period.
void frmPrintMenu::applyBatchPeriods(const QString& periods) {
    if (!dbgList_->isEnabled()) return;
    if (periods == QStringLiteral("newest")) return;  // as the menu starts
    dbgList_->clearSelection();
    if (periods == QStringLiteral("none")) return;
    const bool all = periods == QStringLiteral("all");
    const QStringList positions = periods.split(QLatin1Char(','));
    for (int row = 0; row < dbgList_->count(); ++row) {
        if (all || positions.contains(QString::number(row + 1))) dbgList_->item(row)->setSelected(true);
    }
}

}  // namespace kelvary
