// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>
#include <QObject>
#include <QString>
#include <QWidget>

#include <functional>

class ParameterSimple;
class QEvent;
class ListView;
class QAbstractSpinBox;
class QGridLayout;
class QLineEdit;
class QPushButton;

// The editor of one parameter on a page: a "?" button that opens the
// documentation and, to its right, the control that suits the parameter's
// type. The control is chosen once, at construction.
class ParamSimple : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY(ParamSimple)

public:
    // The parameter is not owned; a null one gives a frame without a control.
    ParamSimple(ParameterSimple *parameter, QWidget *parent);

signals:
    // The control has written to the parameter (accepted or not).
    void sig_chenged();
    // True on entering the frame, false on leaving it.
    void sig_hovered(bool hovered);
    // Reload the control from the parameter.
    void sig_update();

public slots:
    // Opens the documentation dialog; its result is of no interest.
    void sl_dialogInfo();

protected:
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    void _setup();
    void _init(ParameterSimple *parameter);
    void _initLayout();
    void _initTitleFont();
    void _initTextDocUrl();
    void _initButtonInfo();
    void _connect();
    void _addControl();

    void _addCheckBox();
    void _addSpinIntBox();
    void _addSpinDoubleBox();
    void _addRadioButtons();

    void _addLineEdit();
    void _addLineEdit_dirPath();
    void _addLineEdit_filePath();
    void _addLineEdit_email();
    void _addLineEdit_password();
    void _addLineEdit_fitkey();
    void _addLineEdit_filterkey();

    void _addListItems();
    void _addListItems_filePaths();
    void _addListItems_fitkeys();
    void _addListItems_filterKeys();

    void _addTLEsField();

    // Pieces shared by the controls above.
    void _write(const QString &text);
    void _guardAgainstWheel(QAbstractSpinBox *box);
    void _placeSpinBox(QAbstractSpinBox *box);
    QLineEdit *_createLabelledLineEdit(bool passwordEcho);
    void _setValidator(QLineEdit *edit, const QString &pattern);
    void _connectLineEditWrite(QLineEdit *edit);
    void _connectLineEditLoad(QLineEdit *edit);
    void _addLineEdit_validated(const QString &pattern);
    void _addLineEdit_browse(const std::function<QString()> &browse);
    void _addListControl(const std::function<void(ListView *)> &onAdd);
    void _addListItems_dialog(const QString &pattern, bool toUpper);

    ParameterSimple *_parameter;
    QGridLayout *_mainLayout;
    QGridLayout *_controlLayout;
    QFont _titleFont;
    QString _title;
    QString _doc;
    QString _url;
    QPushButton *_buttonInfo;
};

// Swallows the wheel and the enter events of the spin box it is installed
// on, so scrolling a page never turns a number by accident.
class IgnoreEventFilter : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(IgnoreEventFilter)

public:
    explicit IgnoreEventFilter(QObject *parent) : QObject(parent) {}

protected:
    bool eventFilter(QObject *object, QEvent *event) override;
};
