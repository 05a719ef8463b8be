// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractMessageHandler>
#include <QSourceLocation>
#include <QString>

#include <string>
#include <vector>

class ParameterComplex;

// The engine between files and the parameter tree. Every function appends its
// reasons to `errors` (never clearing it) and returns 0 for success, 1 for
// done with remarks, 2 for failure.
namespace OrvexConfigLib {

// Validates the schema, then builds a new tree from it into `root`, which the
// caller owns afterwards. 0 or 2; on 2 `root` is untouched.
int loadXSD(std::vector<std::string> &errors, ParameterComplex *&root, std::string const &xsdPath);

// Lays the values of a configuration file over an existing tree. 0, 1 (some
// nodes not found, the tree holds what could be read) or 2 (tree untouched).
int loadXML_knStruct(std::vector<std::string> &errors, ParameterComplex *&root,
                     std::string const &xmlPath);

// Writes the tree as a configuration file; the file is emptied first. 0, 1
// (faulty children left out) or 2.
int writeXML(std::vector<std::string> &errors, ParameterComplex const *root,
             std::string const &xmlPath);

// Tests that the file is a valid XML Schema. 0 or 2, with a location line.
int validateXSD(std::vector<std::string> &errors, std::string const &xsdPath);

// Tests the schema, then the configuration file against it. 0 or 2.
int validateXML(std::vector<std::string> &errors, std::string const &xsdPath,
                std::string const &xmlPath);

// Validates the file, builds the tree from the schema and fills it. 0, 1 or 2.
int loadXSDandXML(std::vector<std::string> &errors, ParameterComplex *&root,
                  std::string const &xsdPath, std::string const &xmlPath);

// Writes to newXmlPath a complete base file overlaid with an older file. 0 or 2.
int updateXML(std::vector<std::string> &errors, std::string const &xsdPath,
              std::string const &baseXmlPath, std::string const &oldXmlPath,
              std::string const &newXmlPath);

} // namespace OrvexConfigLib

// Keeps the last message of Qt's schema classes; only its location is used.
class MessageHandler : public QAbstractMessageHandler
{
    Q_OBJECT
    Q_DISABLE_COPY(MessageHandler)

public:
    explicit MessageHandler(QObject *parent = nullptr);

    QtMsgType messageType;
    QString description;
    QSourceLocation sourceLocation;

protected:
    void handleMessage(QtMsgType type, QString const &description, QUrl const &identifier,
                       QSourceLocation const &sourceLocation) override;
};
