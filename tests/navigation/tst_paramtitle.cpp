// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "navigation/paramtitle.h"

#include <QtTest>

class TestParamTitle : public QObject
{
    Q_OBJECT

private slots:
    void headingIsBoldAtEighteenPixels();
    void isPlainChildWidget();
    void setEmptyTextBlanksTheHeading();
};

void TestParamTitle::headingIsBoldAtEighteenPixels()
{
    QWidget parent;
    ParamTitle title(&parent);
    QCOMPARE(title.font().weight(), int(QFont::Bold));
    QCOMPARE(title.font().pixelSize(), 18);
}

void TestParamTitle::isPlainChildWidget()
{
    QWidget parent;
    ParamTitle title(&parent);
    QCOMPARE(title.windowType(), Qt::Widget);
    QVERIFY(!title.isWindow());
    QVERIFY(title.text().isEmpty());
}

void TestParamTitle::setEmptyTextBlanksTheHeading()
{
    ParamTitle title(nullptr);
    title.setText("Search results");
    title.setEmptyText();
    QVERIFY(title.text().isEmpty());
}

QTEST_MAIN(TestParamTitle)
#include "tst_paramtitle.moc"
