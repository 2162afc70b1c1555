// List fills from the master tables: order, texts, item data, the state a
// filled control is left in, and the reports of what cannot be filled.
#include "startup/ComboBoxData.h"

#include "startup/MenuTestHome.h"
#include "support/RecordingUi.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>

#include <gtest/gtest.h>

using namespace kelvary;
using kelvary::test::MenuTestHome;
using kelvary::test::RecordingUiGuard;

namespace {

QStringList texts(const QComboBox& combo) {
    QStringList out;
    for (int i = 0; i < combo.count(); ++i) out << combo.itemText(i);
    return out;
}

QList<qlonglong> keys(const QComboBox& combo) {
    QList<qlonglong> out;
    for (int i = 0; i < combo.count(); ++i) out << combo.itemData(i).toLongLong();
    return out;
}

class ComboBoxData : public ::testing::Test {
protected:
    QStringList errorPlaces() {
        QStringList places;
        for (const auto& m : ui->messages)
            if (m.request.title == QStringLiteral("エラーが発生しました"))
                places << m.request.text.section(QStringLiteral("\r\n"), 1, 1);
        return places;
    }

    RecordingUiGuard ui;
    MenuTestHome home;
};

TEST_F(ComboBoxData, CoursesFollowSortNumberThenKey) {
    home.run(R"sql(
        DELETE FROM tblService;
        INSERT INTO tblService VALUES (3, 'エクスプレス', 1);
        INSERT INTO tblService VALUES (9, '特別', 2);
        INSERT INTO tblService VALUES (1, 'レギュラー', 1);
    )sql");
    QComboBox combo;
    gSetComboBoxData(&combo, listkind::Service);

    EXPECT_EQ(texts(combo), (QStringList{QStringLiteral("レギュラー"), QStringLiteral("エクスプレス"),
                                         QStringLiteral("特別")}));
    EXPECT_EQ(keys(combo), (QList<qlonglong>{1, 3, 9}));
    // Freshly filled, nothing is chosen until the caller chooses.
    EXPECT_EQ(combo.currentIndex(), -1);
    EXPECT_TRUE(errorPlaces().isEmpty());
}

TEST_F(ComboBoxData, PrefecturesFillAListAndReplaceWhatItHeld) {
    home.run(R"sql(
        INSERT INTO tblPref VALUES (13, '東京都');
        INSERT INTO tblPref VALUES (1, '北海道');
        INSERT INTO tblPref VALUES (47, NULL);
    )sql");
    QListWidget list;
    list.addItem(QStringLiteral("前回の項目"));
    list.setCurrentRow(0);
    gSetComboBoxData(&list, listkind::Pref);

    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.item(0)->text(), QStringLiteral("北海道"));
    EXPECT_EQ(list.item(1)->text(), QStringLiteral("東京都"));
    EXPECT_EQ(list.item(2)->text(), QString());  // a Null name reads as empty
    EXPECT_EQ(list.item(2)->data(Qt::UserRole).toLongLong(), 47);
    EXPECT_EQ(list.currentRow(), -1);
}

TEST_F(ComboBoxData, WhatCannotBeFilledIsReportedUnderItsName) {
    QComboBox combo;
    combo.addItem(QStringLiteral("残る"));
    gSetComboBoxData(&combo, 3);  // no such list
    EXPECT_EQ(texts(combo), QStringList{QStringLiteral("残る")});

    QLineEdit edit;
    gSetComboBoxData(&edit, listkind::Service);  // not a list control

    home.run("INSERT INTO tblHantoku VALUES (NULL, '不明');");
    gSetComboBoxData(&combo, listkind::Hantoku);  // a key must be a number

    const QString place = QStringLiteral("場所： gSetComboBoxData");
    EXPECT_EQ(errorPlaces(), (QStringList{place, place, place}));
}

}  // namespace
