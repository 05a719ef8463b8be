// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "editors/dialogadditem.h"
#include "editors/listview.h"
#include "editors/paramsimple.h"
#include "model/parameter.h"
#include "modalanswerer.h"
#include "parambuilders.h"
#include "typing.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>
#include <QWheelEvent>
#include <QtTest>

#include <climits>
#include <memory>
#include <string>
#include <vector>

// What the editor tests share: builders for loose parameters and the trees
// that own them, and the lookups that find the parts of an editor frame.
namespace fixture {

using builders::enumeration;
using builders::range;

using Type = ParameterSimple::SimpleType;

inline const QString keyRule25 = QStringLiteral("[a-zA-Z0-9)(_\\-]{1,25}");
inline const QString keyRule8 = QStringLiteral("[A-Z0-9)(_\\-]{1,8}");
inline const QString emailRule = QStringLiteral("[a-zA-Z0-9.]+@[a-zA-Z0-9.]+");
inline const QString black = QStringLiteral("QLineEdit { color: black;}");
inline const QString red = QStringLiteral("QLineEdit { color: red;}");

inline Parameter::VisualParams visual(const std::string &name = "Some value", int importance = 2,
                               const std::string &doc = std::string(),
                               const std::string &source = std::string(),
                               const std::string &dimension = std::string())
{
    Parameter::VisualParams v;
    v.name_en = name;
    v.importance = importance;
    v.documentation = doc;
    v.source = source;
    v.dimension = dimension;
    return v;
}

// A leaf that can be given a value its facets would refuse, as a file written
// for another schema leaves behind.
class LooseParameter : public ParameterSimple
{
public:
    using ParameterSimple::ParameterSimple;
    void forceValue(const std::string &text) { value = text; }
};

// The parameters of one test; the root owns them.
struct Tree
{
    Tree() : root(nullptr, "root", Parameter::VisualParams()) {}

    LooseParameter *simple(Type type, const std::string &value = std::string(),
                           const ParameterSimple::Fasets &fasets = ParameterSimple::Fasets(),
                           const Parameter::VisualParams &v = visual(), const std::string &key = "key")
    {
        auto *p = new LooseParameter(&root, key, v, type, fasets);
        if (!value.empty())
            p->forceValue(value);
        return p;
    }

    ParameterList *list(Type type, std::vector<std::string> values = {}, double minimum = 0,
                        const Parameter::VisualParams &v = visual())
    {
        auto *p = new ParameterList(&root, "items", "item", v, type, range(minimum, 9999999.9));
        if (!values.empty())
            p->setValues(values);
        return p;
    }

    ParameterListTLEs *tles(const Parameter::VisualParams &v = visual())
    {
        return new ParameterListTLEs(&root, "tles", "tle", v);
    }

    ParameterComplex root;
};

inline QString dataFile(const QString &name)
{
    return QStringLiteral(ORVEX_TEST_DATA_DIR "/editors/") + name;
}

inline QByteArray readData(const QString &name)
{
    QFile file(dataFile(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("missing test data %s", qPrintable(name));
    return file.readAll();
}

// The sets of a file in the form the editor writes: one empty line between
// sets, two line feeds at the end.
inline QString normalForm(const QByteArray &fileText)
{
    QString text = QString::fromUtf8(fileText).trimmed();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return text + QStringLiteral("\n\n");
}

inline void showAndWait(QWidget &widget)
{
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
}

inline QPushButton *buttonOf(QWidget *parent, const QString &text)
{
    for (QPushButton *button : parent->findChildren<QPushButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

inline QPushButton *infoButton(ParamSimple &frame)
{
    return buttonOf(&frame, QStringLiteral("?"));
}

// The line edit of a text control, not the one inside a spin box.
inline QLineEdit *lineEditOf(ParamSimple &frame)
{
    return frame.findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
}

inline QString patternOf(const QLineEdit *edit)
{
    auto *validator = qobject_cast<const QRegularExpressionValidator *>(edit->validator());
    return validator ? validator->regularExpression().pattern() : QStringLiteral("<none>");
}

inline bool caseInsensitive(const QLineEdit *edit)
{
    auto *validator = qobject_cast<const QRegularExpressionValidator *>(edit->validator());
    return validator
           && validator->regularExpression().patternOptions().testFlag(
               QRegularExpression::CaseInsensitiveOption);
}

// Where a widget sits in a grid: row, column, row span, column span.
inline QList<int> cellOf(QGridLayout *grid, QWidget *widget)
{
    const int i = grid->indexOf(widget);
    if (i < 0)
        return {};
    int row, column, rowSpan, columnSpan;
    grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
    return {row, column, rowSpan, columnSpan};
}

// The grid that holds the control, right of the "?" button.
inline QGridLayout *controlGrid(ParamSimple &frame)
{
    auto *main = qobject_cast<QGridLayout *>(frame.layout());
    if (!main)
        return nullptr;
    for (int i = 0; i < main->count(); ++i) {
        if (auto *grid = qobject_cast<QGridLayout *>(main->itemAt(i)->layout()))
            return grid;
    }
    return nullptr;
}

// The text the control shows as its title.
inline QString titleShown(ParamSimple &frame)
{
    if (auto *group = frame.findChild<QGroupBox *>())
        return group->title();
    if (auto *check = frame.findChild<QCheckBox *>())
        return check->text();
    if (auto *label = frame.findChild<QLabel *>())
        return label->text();
    return QString();
}

// A short name for the control a frame holds.
inline QString controlKind(ParamSimple &frame)
{
    if (frame.findChild<QPlainTextEdit *>())
        return QStringLiteral("tle");
    if (frame.findChild<ListView *>())
        return QStringLiteral("list");
    if (frame.findChild<QRadioButton *>())
        return QStringLiteral("radio");
    if (frame.findChild<QDoubleSpinBox *>())
        return QStringLiteral("double");
    if (frame.findChild<QSpinBox *>())
        return QStringLiteral("int");
    if (frame.findChild<QCheckBox *>())
        return QStringLiteral("check");
    if (QLineEdit *edit = lineEditOf(frame)) {
        QString kind = QStringLiteral("line ") + patternOf(edit);
        if (edit->echoMode() == QLineEdit::Password)
            kind += QStringLiteral(" password");
        if (buttonOf(&frame, QStringLiteral("...")))
            kind += QStringLiteral(" browse");
        return kind;
    }
    return QStringLiteral("none");
}

// Clicks a check box or radio button by mouse, on its indicator.
inline void clickIndicator(QAbstractButton *button)
{
    QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
}

inline QRadioButton *radioOf(ParamSimple &frame, const QString &text)
{
    for (QRadioButton *button : frame.findChildren<QRadioButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

inline QStringList checkedRadios(ParamSimple &frame)
{
    QStringList on;
    for (QRadioButton *button : frame.findChildren<QRadioButton *>()) {
        if (button->isChecked())
            on << button->text();
    }
    return on;
}

inline QStringList rowsOf(ListView *view)
{
    QStringList rows;
    for (int row = 0; row < view->model()->rowCount(); ++row)
        rows << view->model()->index(row, 0).data().toString();
    return rows;
}

inline void clickRow(ListView *view, int row)
{
    const QRect rect = view->visualRect(view->model()->index(row, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
}

// Answers the add dialog: types, then presses Ok or Cancel.
inline ModalAnswerer::Handler typeInAddDialog(const QString &typed, bool ok)
{
    return [typed, ok](QWidget *w) {
        QLineEdit *edit = w->findChild<QLineEdit *>();
        QVERIFY(edit);
        QTest::keyClicks(edit, typed);
        buttonOf(w, ok ? QStringLiteral("&Ok") : QStringLiteral("&Cancel"))->click();
    };
}

inline std::vector<std::string> strings(std::initializer_list<const char *> items)
{
    return std::vector<std::string>(items.begin(), items.end());
}

inline QPlainTextEdit *fieldOf(ParamSimple &frame)
{
    return frame.findChild<QPlainTextEdit *>();
}

inline void paste(QPlainTextEdit *field, const QString &text)
{
    QApplication::clipboard()->setText(text);
    field->paste();
}

inline std::vector<ParameterListTLEs::TLE> setsOf(const QByteArray &fileText)
{
    std::vector<ParameterListTLEs::TLE> sets;
    const QStringList lines = QString::fromUtf8(fileText).remove(QLatin1Char('\r')).split('\n');
    for (int i = 0; i + 2 < lines.size(); i += 4)
        sets.push_back({lines[i].toStdString(), lines[i + 1].toStdString(), lines[i + 2].toStdString()});
    return sets;
}

// The field's text for these sets.
inline QString fieldTextOf(const std::vector<ParameterListTLEs::TLE> &sets)
{
    QStringList parts;
    for (const ParameterListTLEs::TLE &set : sets) {
        QString part;
        if (!set.line0.empty())
            part += QString::fromStdString(set.line0) + QLatin1Char('\n');
        part += QString::fromStdString(set.line1) + QLatin1Char('\n') + QString::fromStdString(set.line2);
        parts << part;
    }
    return parts.join(QStringLiteral("\n\n")) + QStringLiteral("\n\n");
}

inline QStringList namesOf(const std::vector<ParameterListTLEs::TLE> &sets)
{
    QStringList names;
    for (const ParameterListTLEs::TLE &set : sets)
        names << QString::fromStdString(set.line0);
    return names;
}

inline void checkWarning(const ModalAnswerer::Seen &seen, const QString &text)
{
    QCOMPARE(seen.className, QStringLiteral("QMessageBox"));
    QCOMPARE(seen.title, QStringLiteral("Warning!"));
    QCOMPARE(seen.text, text);
    QCOMPARE(seen.buttons, int(QMessageBox::Ok));
    QCOMPARE(seen.icon, QMessageBox::Warning);
}


} // namespace fixture
