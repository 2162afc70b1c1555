// The list-control helpers: the item data of a list entry is the key of the
// master row it shows (stored under Qt::UserRole), the text is what the user reads.
#include "platform/VbError.h"
#include "startup/mdlFunctionStandard.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace kelvary {
namespace {


Variant fromItemData(const QVariant& data) {
    if (!data.isValid() || data.isNull()) return Variant::fromLong(0);
    bool ok = false;
    const qlonglong number = data.toLongLong(&ok);
    if (ok) return Variant::fromLong(static_cast<std::int32_t>(number));
    return Variant(data.toString());
}

void setText(QWidget* control, const QString& text) {
    if (auto* edit = qobject_cast<QLineEdit*>(control)) edit->setText(text);
    else if (auto* plain = qobject_cast<QPlainTextEdit*>(control)) plain->setPlainText(text);
    else if (auto* rich = qobject_cast<QTextEdit*>(control)) rich->setPlainText(text);
    else if (auto* label = qobject_cast<QLabel*>(control)) label->setText(text);
    else if (auto* combo = qobject_cast<QComboBox*>(control)) combo->setCurrentText(text);
    else throw VbError::standard(vberr::NotSupported);
}

// True as VB's "value = True" reads it: the Boolean True or the number -1.
bool isVbTrue(const Variant& value) {
    if (value.isNull() || value.isEmpty()) return false;
    if (value.type() == VarType::Boolean) return value.toBool();
    return value.isNumeric() && value.toDouble() == -1.0;
}

void selectByItemData(QWidget* control, const Variant& value) {
    const QString wanted = value.text();
    if (auto* combo = qobject_cast<QComboBox*>(control)) {
        for (int i = 0; i < combo->count(); ++i) {
            if (combo->itemData(i).toString().trimmed() == wanted) {
                combo->setCurrentIndex(i);
                return;
            }
        }
        return;
    }
    if (auto* list = qobject_cast<QListWidget*>(control)) {
        for (int i = 0; i < list->count(); ++i) {
            if (list->item(i)->data(Qt::UserRole).toString().trimmed() == wanted) {
                list->setCurrentRow(i);
                return;
            }
        }
        return;
    }
    throw VbError::standard(vberr::NotSupported);
}

void setDefaultProperty(QWidget* control, const Variant& value) {
    const QMetaProperty property = control->metaObject()->userProperty();
    if (!property.isValid()) throw VbError::standard(vberr::NotSupported);
    property.write(control, value.text());
}

}  // namespace

Variant gvarGetComboBoxValue(QWidget* control) {
    return trapped(QStringLiteral("gvarGetComboBoxValue"), 0, Variant(), [&] {
        if (auto* combo = qobject_cast<QComboBox*>(control)) {
            if (combo->currentIndex() < 0) throw VbError::standard(vberr::BadPropertyIndex);
            return fromItemData(combo->currentData());
        }
        if (auto* list = qobject_cast<QListWidget*>(control)) {
            if (!list->currentItem()) throw VbError::standard(vberr::BadPropertyIndex);
            return fromItemData(list->currentItem()->data(Qt::UserRole));
        }
        throw VbError::standard(vberr::NotSupported);
    });
}

void gLetDataToControl(QWidget* control, const Variant& value, int controlKind) {
    const auto place = [&] { return QStringLiteral("gLetDataToControl: ") + (control ? control->objectName() : QString()); };
    trapped(place, 0, [&] {
        switch (controlKind) {
        case 1: selectByItemData(control, value); break;
        case 0:
        case 6: setText(control, value.text()); break;
        case 3:
            if (auto* box = qobject_cast<QAbstractButton*>(control))
                box->setChecked(isVbTrue(value));
            else
                throw VbError::standard(vberr::NotSupported);
            break;
        default: setDefaultProperty(control, value); break;
        }
    });
}

}  // namespace kelvary
