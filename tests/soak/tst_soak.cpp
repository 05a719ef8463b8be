// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// A long night at the console: one window on the shipped schema, driven by a
// seeded generator through a random sequence of user actions on every kind of
// editor and command, every box and dialog answered with a random button.
// After every action the window must be in one of its states; after every
// save the file must pass the schema and load back into a fresh tree with the
// values the window's tree held.
//
//   ORVEX_SOAK_SEED     seed of the generator (a fixed one by default)
//   ORVEX_SOAK_EVENTS   number of actions (1,500 by default)
//   ORVEX_SOAK_MEMORY   every so many actions, print the rate and the memory
//
// A long run needs QtTest's limit of five minutes per test function raised,
// e.g. QTEST_FUNCTION_TIMEOUT=86400000.

#include "soak.h"

#include "hostilefiles.h"

#include "app/manager.h"
#include "engine/orvexconfiglib.h"
#include "model/parameter.h"
#include "navigation/filter.h"

#include <QApplication>
#include <QClipboard>
#include <QDomDocument>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QtTest>

#include <cstdio>

using namespace ManagerTest;

namespace {

constexpr quint64 _defaultSeed = 20261123;
constexpr int _defaultEvents = 1500;
constexpr int _trailLength = 20;

quint64 _seed = _defaultSeed;
int _events = _defaultEvents;
int _memoryEvery = 0;

// What the run has checked, for the closing line.
int _done = 0;
int _savesChecked = 0;
int _reopensEqual = 0;

// The first element sets of a real catalogue, as a user copies them.
QStringList _catalogLines()
{
    const QByteArray text
        = hostile::readFile(QStringLiteral(ORVEX_TEST_DATA_DIR "/tle/catalog-a.tle"));
    QStringList lines;
    for (const QString &line : QString::fromLatin1(text).split(QLatin1Char('\n'))) {
        if (!line.trimmed().isEmpty())
            lines << line.trimmed();
    }
    return lines;
}

// ------------------------------------------------------------------ memory

qint64 _procStatusKb(const char *field)
{
    const QByteArray status = hostile::readFile(QStringLiteral("/proc/self/status"));
    for (const QByteArray &line : status.split('\n')) {
        if (line.startsWith(field))
            return line.mid(int(qstrlen(field))).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

// The first key path whose values differ, with both sides.
QString _firstDifference(const hostile::Snapshot &expected, const hostile::Snapshot &actual)
{
    QStringList keys = expected.keys() + actual.keys();
    keys.removeDuplicates();
    for (const QString &key : qAsConst(keys)) {
        if (expected.value(key) != actual.value(key))
            return QStringLiteral("%1: window [%2], file [%3]")
                .arg(key, expected.value(key).join(QLatin1Char('|')),
                    actual.value(key).join(QLatin1Char('|')));
    }
    return QString();
}

// The DOM parser drops text made only of white space: such a value is written
// but read back empty, by design (pinned by the hostile engine tests).
hostile::Snapshot _asReadBack(hostile::Snapshot values)
{
    for (QStringList &texts : values) {
        for (QString &text : texts) {
            if (text.trimmed().isEmpty())
                text.clear();
        }
    }
    return values;
}

// The line editors of texts, paths, addresses, passwords and keys take text
// that the schema refuses (the reader takes no length, pattern or facet of a
// named type, and their validators are looser or none), and so does the add
// dialog of every list, whose pattern is not the item type's (a number list
// takes "1e5", which the model reads as 1 and keeps as typed). A saved file
// may fail the schema in those elements and nowhere else. Their key paths.
void _rec_looseElements(const Parameter *node, const QStringList &path, QList<QStringList> &loose)
{
    static const QList<int> looseTypes = { ParameterSimple::String, ParameterSimple::Dirpath,
        ParameterSimple::Filepath, ParameterSimple::Email, ParameterSimple::Password,
        ParameterSimple::HeaderKeys, ParameterSimple::FilterKeys };
    if (const auto *complex = dynamic_cast<const ParameterComplex *>(node)) {
        for (const Parameter *child : complex->getChildrenPtrs())
            _rec_looseElements(
                child, path + QStringList(QString::fromStdString(child->getParameterKey())), loose);
    } else if (const auto *simple = dynamic_cast<const ParameterSimple *>(node)) {
        // A choice is made with radio buttons, which offer only what the schema lists.
        if (simple->getGlobalType() == Parameter::GlobalType::List
            || (looseTypes.contains(simple->getSimpleType())
                && simple->getFasets().kind != ParameterSimple::FasetEnumeration))
            loose << path;
    }
}

QDomElement _elementAt(const QDomDocument &document, const QStringList &path)
{
    QDomElement element = document.documentElement();
    for (const QString &key : path)
        element = element.firstChildElement(key);
    return element;
}

// The saved file with each loose element replaced by the same element of a
// shipped default configuration, which the schema takes; written beside it.
QString _withStandIns(const QString &path, const ParameterComplex *root)
{
    QList<QStringList> loose;
    _rec_looseElements(root, QStringList(), loose);
    QList<QDomDocument> defaults;
    for (const char *service : { "tracking", "survey", "photometry" }) {
        defaults << QDomDocument();
        defaults.last().setContent(
            readAll(defaultDir() + QStringLiteral("/%1-default.conf").arg(QLatin1String(service))));
    }
    QDomDocument document;
    if (!document.setContent(readAll(path)))
        return QString();
    for (const QStringList &elementPath : qAsConst(loose)) {
        QDomElement saved = _elementAt(document, elementPath);
        for (const QDomDocument &source : qAsConst(defaults)) {
            const QDomElement standIn = _elementAt(source, elementPath);
            if (saved.isNull() || standIn.isNull())
                continue;
            saved.parentNode().replaceChild(document.importNode(standIn, true), saved);
            break;
        }
    }
    const QString standIns = path + QStringLiteral(".stand-ins");
    return writeAll(standIns, document.toByteArray(1)) ? standIns : QString();
}

} // namespace

void TestSoak::initTestCase()
{
    QApplication::setQuitOnLastWindowClosed(false);
    QVERIFY(installShippedDefaults());
    QVERIFY(_dir.isValid());
    _rng.seed(_seed);
    _catalog = _catalogLines();
    QVERIFY(_catalog.size() >= 30);
    _makePool();
}

void TestSoak::cleanupTestCase()
{
    QApplication::clipboard()->clear();
    _window.reset();
    _manager.reset();
    _modals.reset();
}

// ------------------------------------------------------------------ checks

// The states of the window: the widgets of an open configuration enabled
// together; closed means saved; the caption and the information label as
// the path, the marker, the version and the service say.
QString TestSoak::_stateProblem() const
{
    const bool opened = _window->filter->isEnabled();
    const QString wrong = _window->wrongEnabledState(opened);
    if (!wrong.isEmpty())
        return wrong;
    const QString path = _manager->getConfigPath();
    const bool saved = _manager->isSaved();
    if (!opened && !saved)
        return QStringLiteral("closed, but marked as modified");
    const QString title = path.isEmpty() ? QLatin1String(kTitle) : caption(path, !saved);
    if (_manager->windowTitle() != title)
        return QStringLiteral("caption \"%1\", expected \"%2\"")
            .arg(_manager->windowTitle(), title);
    QString info;
    if (opened) {
        if (_manager->getConfigVersion() != Version())
            info = QStringLiteral("Config version: %1\t")
                       .arg(QString::fromStdString(_manager->getConfigVersion().getString()));
        if (!_manager->getService().isEmpty())
            info += QStringLiteral("Service: ") + _manager->getService();
    }
    if (_window->infoText() != info)
        return QStringLiteral("information label \"%1\", expected \"%2\"")
            .arg(_window->infoText(), info);
    if (opened && !path.isEmpty() && !QFileInfo(path).isFile())
        return QStringLiteral("open, but the file %1 is not there").arg(path);
    if (opened && !path.isEmpty() && saved
        && valueInFile(path, QStringLiteral("Service")) != _manager->getService())
        return QStringLiteral("service %1 open, the file says %2")
            .arg(_manager->getService(), valueInFile(path, QStringLiteral("Service")));
    return QString();
}

// Each file written by the action: valid against the schema, and a fresh
// tree loaded from it holds the values that the window's tree held.
QString TestSoak::_checkSaves()
{
    const QList<SaveCheck> pending = _pending;
    _pending.clear();
    _updateSeen = false;
    _updateWritten = false;
    if (!_errorBoxes.isEmpty())
        return QStringLiteral("a save failed: ") + _errorBoxes.join(QLatin1Char(' '));
    const std::string schema = schemaPath().toStdString();
    for (const SaveCheck &check : pending) {
        // A Save As that was cancelled later (the question about replacing
        // the file) wrote nothing.
        if (!QFileInfo(check.path).isFile())
            continue;
        std::vector<std::string> lines;
        if (OrvexConfigLib::validateXML(lines, schema, check.path.toStdString()) != 0) {
            const QString standIns = _withStandIns(check.path, _manager->getRootParameter());
            lines.clear();
            if (standIns.isNull()
                || OrvexConfigLib::validateXML(lines, schema, standIns.toStdString()) != 0)
                return QStringLiteral("%1 is not valid, not even with stand-ins for the loose "
                                      "editors' texts: %2")
                    .arg(check.path, _toText(lines));
        }
        ++_savesChecked;
        ParameterComplex *fresh = nullptr;
        std::unique_ptr<ParameterComplex> owner;
        if (OrvexConfigLib::loadXSD(lines, fresh, schema) != 0)
            return QStringLiteral("the schema does not load: ") + _toText(lines);
        owner.reset(fresh);
        const int loaded = OrvexConfigLib::loadXML_knStruct(lines, fresh, check.path.toStdString());
        if (loaded != 0)
            return QStringLiteral("%1 loads with %2: %3")
                .arg(check.path)
                .arg(loaded)
                .arg(_toText(lines));
        const QString difference
            = _firstDifference(_asReadBack(check.values), _asReadBack(hostile::snapshot(fresh)));
        if (!difference.isEmpty())
            return QStringLiteral("%1 reads back otherwise: %2").arg(check.path, difference);
        ++_reopensEqual;
    }
    return QString();
}

void TestSoak::_fail(const QString &why)
{
    std::fprintf(stderr,
        "soak: failed after %d events, seed %llu\nsoak: %s\nsoak: the last actions:\n", _done,
        static_cast<unsigned long long>(_seed), qPrintable(why));
    const QStringList last = _trail.mid(qMax(0, _trail.size() - _trailLength));
    for (const QString &action : last)
        std::fprintf(stderr, "  %s\n", qPrintable(action));
    // The files stay for a look at what was written.
    _dir.setAutoRemove(false);
    std::fprintf(stderr, "soak: the files are kept in %s\n", qPrintable(_dir.path()));
    QFAIL(qPrintable(why));
}

void TestSoak::windowKeepsItsStatesThroughRandomUserActions()
{
    _modals = std::make_unique<Modals>();
    _modals->handleAllWith([this](QWidget *modal) { _answer(modal); });
    _manager = makeManager();
    _window = std::make_unique<Window>(_manager.get());
    // The update of an older file saves it in the middle of the opening, and
    // the first refresh of the editors may rewrite decimals in the tree right
    // after (six significant digits): the tree as written is the one that
    // stands when the save puts the file's name into the caption.
    connect(_manager.get(), &QWidget::windowTitleChanged, this, [this] {
        if (!_updateSeen || _updateWritten || _manager->getConfigPath().isEmpty())
            return;
        _updateWritten = true;
        _pending << SaveCheck { _manager->getConfigPath(),
            hostile::snapshot(_manager->getRootParameter()) };
    });
    QVERIFY(showActive(_manager.get()));
    QVERIFY(_stateProblem().isEmpty());

    QElapsedTimer clock;
    clock.start();
    for (_done = 0; _done < _events;) {
        _act();
        ++_done;
        if (QTest::currentTestFailed())
            return _fail(QStringLiteral("a step of the action failed"));
        // The event loop runs between a user's actions.
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (!_modals->unexpected().isEmpty())
            return _fail(QStringLiteral("a modal widget was left standing: ") + _modals->report());
        QString problem = _stateProblem();
        if (problem.isEmpty())
            problem = _checkSaves();
        if (!problem.isEmpty())
            return _fail(problem);
        if (_memoryEvery > 0 && _done % _memoryEvery == 0) {
            // The widgets tell what the memory holds: dialogs made through a
            // static create and search pages are kept by design.
            std::printf("soak: %d events, %.1f events/s, rss %lld kB, peak rss %lld kB, "
                        "%d widgets\n",
                _done, _done * 1000.0 / qMax<qint64>(1, clock.elapsed()), _procStatusKb("VmRSS:"),
                _procStatusKb("VmHWM:"), _manager->findChildren<QWidget *>().size());
            std::fflush(stdout);
        }
    }
}

int main(int argc, char *argv[])
{
    bool ok = false;
    const quint64 seed = qEnvironmentVariable("ORVEX_SOAK_SEED").toULongLong(&ok);
    if (ok)
        _seed = seed;
    const int events = qEnvironmentVariableIntValue("ORVEX_SOAK_EVENTS", &ok);
    if (ok && events > 0)
        _events = events;
    _memoryEvery = qEnvironmentVariableIntValue("ORVEX_SOAK_MEMORY");
    std::printf("soak: seed %llu, %d events\n", static_cast<unsigned long long>(_seed), _events);
    std::fflush(stdout);

    int applicationArgc = 1;
    QApplication application(applicationArgc, argv);
    application.setAttribute(Qt::AA_Use96Dpi, true);
    int result = 0;
    {
        TestSoak test;
        QTEST_SET_MAIN_SOURCE_PATH
        result = QTest::qExec(&test, argc, argv);
    }
    std::printf("soak: %d events, %d saves checked, %d reopens equal, seed %llu\n", _done,
        _savesChecked, _reopensEqual, static_cast<unsigned long long>(_seed));
    return result;
}
