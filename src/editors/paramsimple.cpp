// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "editors/paramsimple.h"

#include "editors/dialogadditem.h"
#include "editors/dialoginfo.h"
#include "editors/listview.h"
#include "model/parameter.h"
#include "model/tlerecords.h"
#include "tle/checkertle.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QSpinBox>
#include <QStringList>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

const QString _emailPattern = QStringLiteral("[a-zA-Z0-9.]+@[a-zA-Z0-9.]+");
// Upper case only on paper: the case-insensitive option lets small letters in too.
const QString _fitkeyPattern = QStringLiteral("[A-Z0-9)(_\\-]{1,8}");
const QString _filterkeyPattern = QStringLiteral("[a-zA-Z0-9)(_\\-]{1,25}");

} // namespace

ParamSimple::ParamSimple(ParameterSimple *parameter, QWidget *parent) : QWidget(parent)
{
    _setup();
    _init(parameter);
}

void ParamSimple::_setup()
{
    _parameter = nullptr;
    _mainLayout = nullptr;
    _controlLayout = nullptr;
    _titleFont = QFont();
    _title.clear();
    _doc.clear();
    _url.clear();
    _buttonInfo = nullptr;
}

void ParamSimple::_init(ParameterSimple *parameter)
{
    setAttribute(Qt::WA_MouseTracking, true);
    _parameter = parameter;
    _initLayout();
    _initTitleFont();
    _initTextDocUrl();
    _initButtonInfo();
    _connect();
    _addControl();
}

void ParamSimple::_initLayout()
{
    // Filled before it goes onto the frame, so that no needless layout
    // request walks a page of editors that are not yet polished.
    _mainLayout = new QGridLayout();
    _controlLayout = new QGridLayout();
    _mainLayout->setContentsMargins(0, 0, 0, 0);
    _controlLayout->setContentsMargins(0, 0, 0, 0);
    _mainLayout->addLayout(_controlLayout, 0, 1);
    setLayout(_mainLayout);
}

void ParamSimple::_initTitleFont()
{
    if (!_parameter)
        return;
    if (_parameter->getVisualParams().importance <= 1)
        _titleFont.setWeight(QFont::Bold);
}

void ParamSimple::_initTextDocUrl()
{
    if (!_parameter)
        return;
    const Parameter::VisualParams visual = _parameter->getVisualParams();
    _title = visual.name_en.empty() ? QString::fromStdString(_parameter->getParameterKey())
                                    : QString::fromStdString(visual.name_en);
    _doc = QString::fromStdString(visual.documentation);
    _url = QString::fromStdString(visual.source);
    // The tool tip is the title; the documentation lives behind the "?" button.
    setToolTip(_title);
    setWhatsThis(_doc);
}

void ParamSimple::_initButtonInfo()
{
    // Only the text counts: a link without text gives nothing to show.
    const bool documented = !_doc.isEmpty();
    _buttonInfo = new QPushButton(QStringLiteral("?"), this);
    // Polished before it takes its sheet, the button reads the sheet once and
    // has its final colour from the start.
    _buttonInfo->ensurePolished();
    _buttonInfo->setStyleSheet(
        documented ? QStringLiteral("color: blue") : QStringLiteral("color: grey"));
    _buttonInfo->setMinimumWidth(30);
    _buttonInfo->setMaximumWidth(30);
    _buttonInfo->setFlat(true);
    _mainLayout->addWidget(_buttonInfo, 0, 0);
    if (!documented)
        _buttonInfo->setEnabled(false);
}

void ParamSimple::_connect()
{
    connect(_buttonInfo, &QPushButton::clicked, this, &ParamSimple::sl_dialogInfo);
}

void ParamSimple::sl_dialogInfo()
{
    DialogInfo::create(_title, _doc, _url, this);
}

void ParamSimple::enterEvent(QEvent *event)
{
    emit sig_hovered(true);
    QWidget::enterEvent(event);
}

void ParamSimple::leaveEvent(QEvent *event)
{
    emit sig_hovered(false);
    QWidget::leaveEvent(event);
}

void ParamSimple::_addControl()
{
    if (!_parameter)
        return;
    const Parameter::GlobalType global = _parameter->getGlobalType();
    const ParameterSimple::SimpleType type = _parameter->getSimpleType();

    if (global == Parameter::GlobalType::List) {
        switch (type) {
        case ParameterSimple::HeaderKeys: _addListItems_fitkeys(); break;
        case ParameterSimple::FilterKeys: _addListItems_filterKeys(); break;
        case ParameterSimple::Filepath: _addListItems_filePaths(); break;
        default: _addListItems(); break;
        }
        return;
    }
    if (global == Parameter::GlobalType::ListTLEs) {
        _addTLEsField();
        return;
    }
    if (global != Parameter::GlobalType::Simple)
        return;

    const ParameterSimple::Fasets fasets = _parameter->getFasets();
    if (fasets.kind == ParameterSimple::FasetEnumeration) {
        // An enumeration decides the control whatever the type; an empty one leaves none.
        if (!fasets.enumeration.empty())
            _addRadioButtons();
        return;
    }
    switch (type) {
    case ParameterSimple::Integer: _addSpinIntBox(); break;
    case ParameterSimple::Decimal: _addSpinDoubleBox(); break;
    case ParameterSimple::Boolean: _addCheckBox(); break;
    case ParameterSimple::Dirpath: _addLineEdit_dirPath(); break;
    case ParameterSimple::Filepath: _addLineEdit_filePath(); break;
    case ParameterSimple::Email: _addLineEdit_email(); break;
    case ParameterSimple::Password: _addLineEdit_password(); break;
    case ParameterSimple::HeaderKeys: _addLineEdit_fitkey(); break;
    case ParameterSimple::FilterKeys: _addLineEdit_filterkey(); break;
    default: _addLineEdit(); break; // String, TLE and anything unknown
    }
}

// The write half of every simple control. A refused value still counts as
// an edit, and the control keeps what the user did (pinned by
// decimalWriteAboveBoundIsRefusedButReported).
void ParamSimple::_write(const QString &text)
{
    _parameter->setValue(text.toStdString());
    emit sig_chenged();
}

// ---- check box, spin boxes, radio buttons ----

void ParamSimple::_addCheckBox()
{
    auto *box = new QCheckBox(_title, this);
    box->setChecked(ParameterSimple::value2bool(_parameter->getValue()));
    box->setFont(_titleFont);
    _controlLayout->addWidget(box, 0, 0);

    // clicked, not toggled: a load must not write back.
    connect(box, &QCheckBox::clicked, this, [this](bool checked) {
        _write(checked ? QStringLiteral("true") : QStringLiteral("false"));
    });
    connect(this, &ParamSimple::sig_update, box, [this, box]() {
        box->setChecked(ParameterSimple::value2bool(_parameter->getValue()));
    });
}

void ParamSimple::_guardAgainstWheel(QAbstractSpinBox *box)
{
    box->installEventFilter(new IgnoreEventFilter(box));
    box->setFocusPolicy(Qt::StrongFocus);
}

void ParamSimple::_placeSpinBox(QAbstractSpinBox *box)
{
    auto *label = new QLabel(_title, this);
    label->setFont(_titleFont);
    _controlLayout->addWidget(box, 0, 0);
    _controlLayout->addWidget(label, 0, 1);
}

// The value is set before the range on purpose: it shows clamped to the new
// box's 0..99 until the first refresh, and no connection reports that yet
// (pinned by integerShowsClampedUntilFirstRefresh).
void ParamSimple::_addSpinIntBox()
{
    const Parameter::VisualParams visual = _parameter->getVisualParams();
    const ParameterSimple::Fasets fasets = _parameter->getFasets();
    auto *box = new QSpinBox(this);
    _guardAgainstWheel(box);
    box->setValue(ParameterSimple::value2int(_parameter->getValue()));
    box->setSuffix(QLatin1Char(' ') + QString::fromStdString(visual.dimension));
    // Truncated toward zero, unguarded: the schema's bounds must fit 32 bits.
    box->setMinimum(static_cast<int>(fasets.minValue));
    box->setMaximum(static_cast<int>(fasets.maxValue));
    _placeSpinBox(box);

    connect(box, QOverload<int>::of(&QSpinBox::valueChanged), this,
            [this](int value) { _write(QString::number(value, 10)); });
    connect(this, &ParamSimple::sig_update, box, [this, box]() {
        // Same effect as an unconditional setValue, without reformatting an
        // unchanged number on every refresh.
        const int value = ParameterSimple::value2int(_parameter->getValue());
        if (box->value() != value)
            box->setValue(value);
    });
}

// Same order as the integer box; the value is first rounded to the new box's
// two decimals, and written back with six significant digits, so a longer
// decimal is shortened (1234567.891 becomes 1.23457e+06) on the first refresh.
void ParamSimple::_addSpinDoubleBox()
{
    const Parameter::VisualParams visual = _parameter->getVisualParams();
    const ParameterSimple::Fasets fasets = _parameter->getFasets();
    auto *box = new QDoubleSpinBox(this);
    _guardAgainstWheel(box);
    box->setValue(ParameterSimple::value2double(_parameter->getValue()));
    box->setSuffix(QLatin1Char(' ') + QString::fromStdString(visual.dimension));
    box->setMinimum(fasets.minValue);
    box->setMaximum(fasets.maxValue);
    box->setDecimals(6);
    box->setSingleStep(0.1);
    box->setFocusPolicy(Qt::StrongFocus);
    _placeSpinBox(box);

    connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this](double value) { _write(QString::number(value, 'g', 6)); });
    connect(this, &ParamSimple::sig_update, box, [this, box]() {
        const double value = ParameterSimple::value2double(_parameter->getValue());
        if (box->value() != value)
            box->setValue(value);
    });
}

// The buttons exclude each other as siblings in the group box; there is no
// button group. A load only ever switches a button on, never off.
void ParamSimple::_addRadioButtons()
{
    const ParameterSimple::Fasets fasets = _parameter->getFasets();
    auto *group = new QGroupBox(_title, this);
    auto *groupLayout = new QVBoxLayout(group);
    if (_parameter->getVisualParams().importance < 2)
        group->setStyleSheet(QStringLiteral("QGroupBox { font-weight: bold; }"));
    _controlLayout->addWidget(group, 0, 0);

    const std::string value = _parameter->getValue();
    std::vector<std::pair<QRadioButton *, std::string>> buttons;
    for (const std::string &entry : fasets.enumeration) {
        auto *button = new QRadioButton(QString::fromStdString(entry), this);
        if (entry == value)
            button->setChecked(true);
        groupLayout->addWidget(button);
        buttons.emplace_back(button, entry);

        // clicked: a click on the button already on still reports an edit
        // (pinned by radioClickWritesEntryAndReports).
        connect(button, &QRadioButton::clicked, this,
                [this, entry]() { _write(QString::fromStdString(entry)); });
    }
    // One load for the whole group, reading the value once; each button is
    // held against its own text, which is its entry.
    connect(this, &ParamSimple::sig_update, group, [this, buttons]() {
        const std::string current = _parameter->getValue();
        for (const auto &button : buttons) {
            if (button.second == current)
                button.first->setChecked(true);
        }
    });
}

// ---- line editors ----

QLineEdit *ParamSimple::_createLabelledLineEdit(bool passwordEcho)
{
    auto *label = new QLabel(_title, this);
    auto *edit = new QLineEdit(QString::fromStdString(_parameter->getValue()), this);
    label->setFont(_titleFont);
    if (passwordEcho)
        edit->setEchoMode(QLineEdit::Password);
    _controlLayout->addWidget(label, 0, 0);
    _controlLayout->addWidget(edit, 1, 0);
    return edit;
}

void ParamSimple::_setValidator(QLineEdit *edit, const QString &pattern)
{
    const QRegularExpression re(pattern, QRegularExpression::CaseInsensitiveOption);
    edit->setValidator(new QRegularExpressionValidator(re, this));
}

// Every change of the text is written at once; there is no commit step.
void ParamSimple::_connectLineEditWrite(QLineEdit *edit)
{
    connect(edit, &QLineEdit::textChanged, this, [this](const QString &text) { _write(text); });
}

// A load of the text already shown is skipped: every tree selection
// refreshes all editors, and laying out the same text again is their cost.
void ParamSimple::_connectLineEditLoad(QLineEdit *edit)
{
    connect(this, &ParamSimple::sig_update, edit, [this, edit]() {
        const QString text = QString::fromStdString(_parameter->getValue());
        if (text != edit->text())
            edit->setText(text);
    });
}

void ParamSimple::_addLineEdit()
{
    QLineEdit *edit = _createLabelledLineEdit(false);
    _setValidator(edit, QString()); // the empty pattern refuses nothing
    _connectLineEditWrite(edit);
    _connectLineEditLoad(edit);
}

// The validator refuses what can never match; what is merely incomplete is
// stored as it stands and only shown in red.
void ParamSimple::_addLineEdit_validated(const QString &pattern)
{
    QLineEdit *edit = _createLabelledLineEdit(false);
    _setValidator(edit, pattern);
    connect(edit, &QLineEdit::textChanged, this, [this, edit](const QString &text) {
        _parameter->setValue(text.toStdString());
        edit->setStyleSheet(edit->hasAcceptableInput() ? QStringLiteral("QLineEdit { color: black;}")
                                                       : QStringLiteral("QLineEdit { color: red;}"));
        emit sig_chenged();
    });
    _connectLineEditLoad(edit);
}

void ParamSimple::_addLineEdit_email()
{
    _addLineEdit_validated(_emailPattern);
}

void ParamSimple::_addLineEdit_fitkey()
{
    _addLineEdit_validated(_fitkeyPattern);
}

void ParamSimple::_addLineEdit_filterkey()
{
    _addLineEdit_validated(_filterkeyPattern);
}

void ParamSimple::_addLineEdit_password()
{
    // The echo mode is the whole protection: the value is kept as plain text
    // (pinned by passwordIsHiddenButStoredAsTyped).
    QLineEdit *edit = _createLabelledLineEdit(true);
    _connectLineEditWrite(edit);
    _connectLineEditLoad(edit);
}

// The order of the three connections is the order of effects.
void ParamSimple::_addLineEdit_browse(const std::function<QString()> &browse)
{
    QLineEdit *edit = _createLabelledLineEdit(false);
    auto *button = new QPushButton(QStringLiteral("..."), this);
    button->setMaximumWidth(20);
    _controlLayout->addWidget(button, 1, 1);

    _connectLineEditWrite(edit);
    connect(button, &QPushButton::clicked, this, [edit, browse]() {
        const QString result = browse();
        if (result.isNull())
            return;
        edit->setText(result);
        // Emitted a second time on purpose: picking the path already shown
        // still counts as an edit (pinned by browsePickReportsTwiceOrOnce).
        emit edit->textChanged(result);
    });
    _connectLineEditLoad(edit);
}

void ParamSimple::_addLineEdit_dirPath()
{
    _addLineEdit_browse([this]() {
        return QFileDialog::getExistingDirectory(this, _title,
                                                 QString::fromStdString(_parameter->getValue()),
                                                 QFileDialog::ShowDirsOnly);
    });
}

void ParamSimple::_addLineEdit_filePath()
{
    _addLineEdit_browse([this]() {
        return QFileDialog::getOpenFileName(this, _title,
                                            QString::fromStdString(_parameter->getValue()),
                                            QStringLiteral("All files (*)"), nullptr,
                                            QFileDialog::Options());
    });
}

// ---- list editors ----

// The four list editors differ only in what Add does.
void ParamSimple::_addListControl(const std::function<void(ListView *)> &onAdd)
{
    auto *parameter = dynamic_cast<ParameterList *>(_parameter);
    if (!parameter)
        return;
    auto *label = new QLabel(_title, this);
    auto *list = new ListView(parameter, this);
    auto *buttonAdd = new QPushButton(QStringLiteral("Add"), this);
    auto *buttonDelete = new QPushButton(QStringLiteral("Delete"), this);
    label->setFont(_titleFont);
    buttonDelete->setEnabled(false);

    _controlLayout->addWidget(label, 0, 0);
    _controlLayout->addWidget(list, 1, 0, 2, 2);
    _controlLayout->addWidget(buttonAdd, 1, 2);
    _controlLayout->addWidget(buttonDelete, 2, 2);

    connect(buttonAdd, &QPushButton::clicked, this, [list, onAdd]() { onAdd(list); });
    connect(buttonDelete, &QPushButton::clicked, this, [this, list]() {
        // After a reload nothing is selected: row -1 is refused quietly and
        // the edit is reported all the same (pinned by deleteAfterRefreshHitsNothing).
        list->deleteItem(list->getCurrentIndex());
        emit sig_chenged();
    });
    connect(list, &ListView::sig_isSelected, buttonDelete, [list, buttonDelete](bool selected) {
        if (!selected) {
            buttonDelete->setEnabled(false);
            return;
        }
        // Never disabled on a selection: only a deletion turns it off.
        if (!list->isWithMimimumItems())
            buttonDelete->setEnabled(true);
    });
    connect(this, &ParamSimple::sig_update, list, &ListView::sl_reinit);
}

void ParamSimple::_addListItems_dialog(const QString &pattern, bool toUpper)
{
    _addListControl([this, pattern, toUpper](ListView *list) {
        const QRegularExpression re(pattern, QRegularExpression::CaseInsensitiveOption);
        const QString item = DialogAddItem::create(re, this);
        if (item.isEmpty())
            return;
        list->addItem(toUpper ? item.toUpper() : item);
        emit sig_chenged();
    });
}

void ParamSimple::_addListItems()
{
    _addListItems_dialog(_filterkeyPattern, false);
}

void ParamSimple::_addListItems_filterKeys()
{
    _addListItems_dialog(_filterkeyPattern, false);
}

void ParamSimple::_addListItems_fitkeys()
{
    // The entry rule lets small letters through; the keys are stored in capitals.
    _addListItems_dialog(_fitkeyPattern, true);
}

void ParamSimple::_addListItems_filePaths()
{
    _addListControl([this](ListView *list) {
        const QStringList paths = QFileDialog::getOpenFileNames(this, _title, QString(), QString(),
                                                                nullptr, QFileDialog::Options());
        if (paths.isEmpty())
            return;
        list->addItems(paths);
        emit sig_chenged();
    });
}

// ---- TLE editor ----

namespace {

std::vector<CheckerTLE::TLE> _convert(const std::vector<ParameterListTLEs::TLE> &tles)
{
    return convertTLEs<CheckerTLE::TLE>(tles);
}

std::vector<ParameterListTLEs::TLE> _convert(const std::vector<CheckerTLE::TLE> &tles)
{
    return convertTLEs<ParameterListTLEs::TLE>(tles);
}

// One line per message, each ending in a line feed.
QString __toText(const std::vector<std::string> &messages)
{
    QString text;
    for (const std::string &message : messages) {
        text += QString::fromLatin1(message.data(), static_cast<int>(message.size()));
        text += QLatin1Char('\n');
    }
    return text;
}

void _warn(ParamSimple *frame, const std::vector<std::string> &messages)
{
    QMessageBox::warning(frame, QStringLiteral("Warning!"), __toText(messages), QMessageBox::Ok,
                         QMessageBox::NoButton);
}

// Puts `text` into the field, which now shows `shown`, and leaves it as
// setPlainText would: cursor at the start, no undo history, not modified.
// Only the part that differs is replaced: a pasted catalog is mostly in normal
// form already. The field's signals stay blocked, so the handler does not rerun.
void _rewrite(QPlainTextEdit *field, const QString &shown, const QString &text)
{
    const int common = std::min(shown.size(), text.size());
    int prefix = 0;
    while (prefix < common && shown.at(prefix) == text.at(prefix))
        ++prefix;
    if (prefix > 0 && shown.at(prefix - 1).isHighSurrogate())
        --prefix; // never cut a character in two
    int suffix = 0;
    while (suffix < common - prefix
           && shown.at(shown.size() - 1 - suffix) == text.at(text.size() - 1 - suffix))
        ++suffix;
    if (suffix > 0 && shown.at(shown.size() - suffix).isLowSurrogate())
        --suffix;

    field->blockSignals(true);
    QTextDocument *document = field->document();
    if (prefix != shown.size() || prefix != text.size()) {
        QTextCursor cursor(document);
        cursor.setPosition(prefix);
        cursor.setPosition(shown.size() - suffix, QTextCursor::KeepAnchor);
        cursor.insertText(text.mid(prefix, text.size() - prefix - suffix));
    }
    document->clearUndoRedoStacks();
    document->setModified(false);
    field->moveCursor(QTextCursor::Start);
    field->blockSignals(false);
}

// The field is re-read as a whole: what passes is written back in normal
// form and becomes the list; what fails is reported once and leaves the field.
// No sig_chenged: an edit of TLEs does not mark the configuration as modified.
void apply(ParamSimple *frame, ParameterListTLEs *list, QPlainTextEdit *field)
{
    const QString shown = field->document()->toPlainText();
    const std::string text = shown.toStdString();
    std::vector<std::string> messages;
    std::vector<CheckerTLE::TLE> tles;
    if (CheckerTLE::parseTLEs(messages, tles, text) != 0)
        _warn(frame, messages);

    std::vector<std::string> dropped;
    std::string normal;
    CheckerTLE::TLEs2text(dropped, normal, tles, false);
    // "\n\n" even behind an empty text.
    _rewrite(field, shown, QString::fromStdString(normal) + QStringLiteral("\n\n"));
    list->setTLEs(_convert(tles));
}

} // namespace

// The field itself is the working copy; it stays empty until the first refresh.
void ParamSimple::_addTLEsField()
{
    auto *list = dynamic_cast<ParameterListTLEs *>(_parameter);
    if (!list)
        return;
    auto *buttonClear = new QPushButton(QStringLiteral("Clear"), this);
    auto *buttonLoad = new QPushButton(QStringLiteral("Load from file.."), this);
    auto *field = new QPlainTextEdit(this);
    buttonClear->setEnabled(false);
    buttonLoad->setMinimumWidth(100);
    field->setMinimumSize(350, 250);
    field->setWindowFlags(Qt::SubWindow);
    // The hint finds a fixed-pitch face where no "Console" family is installed.
    QFont font(QStringLiteral("Console"), 8, QFont::Normal, false);
    font.setStyleHint(QFont::TypeWriter);
    field->setFont(font);
    field->setLineWrapMode(QPlainTextEdit::NoWrap);

    // Given the frame as parent, the layout is refused by the frame (which has
    // one already; Qt says so on its log) and stays free for the grid below
    // (pinned by tleFieldSetUp).
    auto *buttons = new QHBoxLayout(this);
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->addWidget(buttonClear);
    buttons->addStretch(1);
    buttons->addWidget(buttonLoad);
    _controlLayout->addLayout(buttons, 0, 0);
    _controlLayout->addWidget(field, 1, 0);

    // Clear: setPlainText runs the text handler in the middle, whose apply
    // shows "TLEs text is empty."; the final apply then stays silent, so the
    // user sees exactly one warning (pinned by tleClearWarnsExactlyOnce).
    connect(buttonClear, &QPushButton::clicked, this, [this, list, field, buttonClear]() {
        list->setTLEs({});
        field->setPlainText(QString());
        buttonClear->setEnabled(false);
        apply(this, list, field);
    });
    connect(buttonLoad, &QPushButton::clicked, this, [this, list, field, buttonClear]() {
        const QString fileName =
            QFileDialog::getOpenFileName(this, tr("Open TLEs File"), QString(),
                                         tr("Text file (*.txt);; All files (*)"), nullptr,
                                         QFileDialog::Options());
        const QString oldText = field->toPlainText();
        std::vector<std::string> messages;
        std::string fileText;
        // A cancelled dialog fails here like an unreadable file, without a word
        // (pinned by tleLoadCancelledOrEmptyChangesNothing).
        if (CheckerTLE::LoadFromFile(messages, fileText, fileName.toStdString()) != 0
            || fileText.empty())
            return;
        // Latin-1 into an empty field, UTF-8 behind earlier sets; both stop at
        // the first zero byte (pinned by tleLoadDecodesLatin1OrUtf8UpToZeroByte).
        if (oldText.isEmpty())
            field->setPlainText(QString::fromLatin1(fileText.c_str()));
        else
            field->setPlainText(oldText + QStringLiteral("\n\n") + QString::fromUtf8(fileText.c_str()));
        buttonClear->setEnabled(true);
        apply(this, list, field);
    });
    connect(field, &QPlainTextEdit::textChanged, this, [this, list, field, buttonClear]() {
        buttonClear->setEnabled(!field->document()->isEmpty());
        apply(this, list, field);
    });
    // Shows the list without touching it or the Clear button; a record that
    // fails the check is left out of the field but stays in the list (pinned
    // by tleRefreshHidesBadRecordButKeepsIt).
    connect(this, &ParamSimple::sig_update, field, [this, list, field]() {
        std::vector<std::string> messages;
        std::string text;
        if (CheckerTLE::TLEs2text(messages, text, _convert(list->getTLEs()), true) != 0)
            _warn(this, messages);
        _rewrite(field, field->toPlainText(),
                 text.empty() ? QString() : QString::fromStdString(text) + QStringLiteral("\n\n"));
    });
}

// ---- IgnoreEventFilter ----

bool IgnoreEventFilter::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Wheel || event->type() == QEvent::Enter)
        return true;
    return QObject::eventFilter(object, event);
}
