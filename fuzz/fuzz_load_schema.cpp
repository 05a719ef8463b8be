// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The schema reader, behind its validation, on any file. A refusal leaves
// the caller's pointer alone and says the engine's lines; an accepted schema
// gives a tree rooted in "root" whose every node knows its parent and level.

#include "fuzzcheck.h"

#include "engine/orvexconfiglib.h"
#include "model/parameter.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

using fuzzcheck::startsWith;

namespace {

QCoreApplication *_application = nullptr;
QTemporaryDir *_dir = nullptr;
std::string _input;

void _rec_checkTree(ParameterComplex const *node)
{
    for (Parameter const *child : node->getChildrenPtrs()) {
        FUZZ_CHECK(child != nullptr, "a null child");
        FUZZ_CHECK(child->getParantPtr() == node, "a child with another parent");
        FUZZ_CHECK(child->getLevel() == node->getLevel() + 1, "a child at the wrong level");
        if (child->getGlobalType() == Parameter::GlobalType::Complex)
            _rec_checkTree(dynamic_cast<ParameterComplex const *>(child));
        else
            FUZZ_CHECK(dynamic_cast<ParameterSimple const *>(child) != nullptr,
                "a leaf of the wrong class");
    }
}

bool _isRefusal(std::vector<std::string> const &lines)
{
    if (lines.size() == 2) {
        return (lines[0] == "XSD schema is not load" || lines[0] == "XSD schema is not valid")
            && startsWith(lines[1], "file is invalid at: line: ");
    }
    return lines.size() == 1
        && (lines[0] == "XSD schema is not dom document"
            || lines[0] == "XSD schema is not orvex schema");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    _application = new QCoreApplication(*argc, *argv);
    _dir = new QTemporaryDir();
    _input = _dir->filePath(QStringLiteral("input.xsd")).toStdString();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    {
        QFile file(QString::fromStdString(_input));
        if (!file.open(QIODevice::WriteOnly)
            || file.write(reinterpret_cast<char const *>(data), qint64(size)) != qint64(size))
            std::abort();
    }
    ParameterComplex before(nullptr, "before", Parameter::VisualParams());
    ParameterComplex *root = &before;
    std::vector<std::string> lines;
    int const status = OrvexConfigLib::loadXSD(lines, root, _input);

    if (status == 2) {
        FUZZ_CHECK(root == &before, "a refused schema replaced the tree");
        FUZZ_CHECK(_isRefusal(lines), lines.empty() ? std::string("no line") : lines[0]);
        return 0;
    }
    FUZZ_CHECK(status == 0, std::to_string(status));
    FUZZ_CHECK(lines.empty(), lines[0]);
    FUZZ_CHECK(root != &before && root != nullptr, "no tree");
    std::unique_ptr<ParameterComplex> const tree(root);
    FUZZ_CHECK(root->getParameterKey() == "root" && root->getParantPtr() == nullptr
            && root->getLevel() == 0,
        "the root");
    _rec_checkTree(root);
    return 0;
}
