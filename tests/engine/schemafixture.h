// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "enginefixture.h"

#include "engine/orvexconfiglib.h"
#include "engine/orvexconfiglib_p.h"
#include "model/parameter.h"

#include <QDomDocument>
#include <QTemporaryDir>

#include <memory>

Q_DECLARE_METATYPE(ParameterSimple::SimpleType)

// The schema reader's tests write each schema text into a file of its own and
// load it, through the validation gate or straight into the reader.
namespace enginefixture {

// What loadXSD made of one schema text.
struct Loaded
{
    int status = -1;
    Lines errors;
    std::unique_ptr<ParameterComplex> root;
};

inline QDomElement firstElement(QByteArray const &xml)
{
    QDomDocument document;
    document.setContent(xml, false);
    return document.documentElement();
}

class SchemaFiles
{
protected:
    QString _write(QByteArray const &text)
    {
        return writeFile(_dir, QStringLiteral("schema-%1.xsd").arg(++_files), text);
    }

    Loaded _load(QByteArray const &schemaText)
    {
        Loaded loaded;
        ParameterComplex *root = nullptr;
        loaded.status = OrvexConfigLib::loadXSD(loaded.errors, root, path(_write(schemaText)));
        loaded.root.reset(root);
        return loaded;
    }

    // The reader behind the validation gate, for schemas that the gate would
    // stop before the reader sees them.
    Loaded _read(QByteArray const &schemaText)
    {
        Loaded loaded;
        ParameterComplex *root = nullptr;
        loaded.status = OrvexConfigLib::_readSchema(loaded.errors, root, path(_write(schemaText)));
        loaded.root.reset(root);
        return loaded;
    }

    QTemporaryDir _dir;
    int _files = 0;
};

} // namespace enginefixture
