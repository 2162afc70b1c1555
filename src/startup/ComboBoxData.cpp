// List fills from the master tables.
#include "startup/ComboBoxData.h"

#include "db/mdlFunctionDatabase.h"
#include "platform/VbError.h"
#include "startup/mdlFunctionStandard.h"

#include <QComboBox>
#include <QListWidget>

namespace kelvary {
namespace {

struct MasterList {
    const char* sql;
    const char* textColumn;
    const char* keyColumn;
};

MasterList masterList(long kind) {
    switch (kind) {
    case listkind::Hantoku:
        return {"Select * From tblHantoku Order By HantokuID", "HantokuText", "HantokuID"};
    case listkind::Pref: return {"Select * From tblPref Order By PrefID", "PrefName", "PrefID"};
    case listkind::Service:
        return {"Select * From tblService Order By SortNumber,ServiceID", "ServiceName", "ServiceID"};
    default: throw VbError::standard(vberr::InvalidProcedureCall);
    }
}

// One entry appender per kind of control; the control starts empty and, as a
// freshly filled VB list did, with nothing selected.
class EntrySink {
public:
    explicit EntrySink(QWidget* control)
        : combo_(qobject_cast<QComboBox*>(control)), list_(qobject_cast<QListWidget*>(control)) {
        if (!combo_ && !list_) throw VbError::standard(vberr::NotSupported);
        if (combo_) combo_->clear();
        else list_->clear();
    }
    void add(const QString& text, long key) {
        if (combo_) combo_->addItem(text, QVariant::fromValue<qlonglong>(key));
        else {
            auto* item = new QListWidgetItem(text, list_);
            item->setData(Qt::UserRole, QVariant::fromValue<qlonglong>(key));
        }
    }
    void finish() {
        if (combo_) combo_->setCurrentIndex(-1);
        else list_->setCurrentRow(-1);
    }

private:
    QComboBox* combo_;
    QListWidget* list_;
};

}  // namespace

void gSetComboBoxData(QWidget* control, long kind) {
    trapped(QStringLiteral("gSetComboBoxData"), 0, [&] {
        const MasterList master = masterList(kind);
        Recordset rows = gobjMakeRecordset(QString::fromLatin1(master.sql));
        EntrySink sink(control);
        const QString textColumn = QString::fromLatin1(master.textColumn);
        const QString keyColumn = QString::fromLatin1(master.keyColumn);
        for (; !rows.eof(); rows.moveNext())
            sink.add(rows.value(textColumn).text(), rows.value(keyColumn).toLong());
        sink.finish();
    });
}

}  // namespace kelvary
