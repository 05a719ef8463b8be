// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

// The pages, the tree selection, the search box and the TLE editor at scale,
// on the offscreen platform, through the real main window.
//
// The main window reads its schema beside its executable. So for each size
// this program writes a schema and a configuration into a temporary
// directory laid out as beside the installed program (orvex/default,
// orvex/conf), copies itself there and runs that copy, which opens the
// configuration the way the program does at start and times:
//
//   createAreas   ParamsTree::createAreas alone (the old pages go inside it)
//   reopen        createAreas, ParamsWidget::setAreas and sig_configOpened(true)
//                 (refresh, first section selected), events processed until idle
//   select        one tree selection (selectItem: page switch and the refresh
//                 that reaches every page), events until idle
//   refresh       the refresh alone, ParamsTree::sig_valuesUpdate, events until idle
//   search        one keystroke: Manager::sl_searchAreaUpdate with a text that
//                 matches over 1,000 parameters, events until idle
//
// The memory run opens the configuration once and reads VmHWM, then adds
// search pages (which the program keeps) and reads what each added to VmRSS,
// and what typing the search word letter by letter adds.
// The paste run puts a 20,000-set catalogue on the clipboard and pastes it into
// the TLE editor until the field shows the normal form.

#include "benchkit.h"
#include "scalegen.h"

#include "app/manager.h"
#include "editors/paramsimple.h"
#include "model/parameter.h"
#include "navigation/paramstree.h"
#include "navigation/paramswidget.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QPlainTextEdit>
#include <QProcess>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTimer>
#include <QVBoxLayout>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

const char *const _valued[] = {"--tle-source", "--sizes", "--scenarios", "--inside", "--params", "--sets"};

// Runs the event loop's pending work until nothing is left.
void _settle()
{
    QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    for (int round = 0; round < 10000; ++round) {
        QCoreApplication::sendPostedEvents();
        if (!dispatcher->processEvents(QEventLoop::AllEvents))
            break;
    }
}

// A message box would stop the run in its own loop; it is closed and counted,
// and the run then fails, since none is expected.
class _ModalGuard
{
public:
    _ModalGuard()
    {
        QObject::connect(&_timer, &QTimer::timeout, [this] {
            if (QWidget *modal = QApplication::activeModalWidget()) {
                std::fprintf(stderr, "unexpected box: %s\n", qPrintable(modal->windowTitle()));
                modal->close();
                ++_seen;
            }
        });
        _timer.start(100);
    }
    int seen() const { return _seen; }

private:
    QTimer _timer;
    int _seen = 0;
};

std::string _n(int value) { return std::to_string(value); }

int _hits(const QList<ParameterSimple *> &list, const QString &filter)
{
    int hits = 0;
    const QString needle = filter.toLower();
    for (ParameterSimple *param : list) {
        if (QString::fromStdString(param->getParameterKey()).toLower().contains(needle)
            || QString::fromStdString(param->getVisualParams().name_en).toLower().contains(needle))
            ++hits;
    }
    return hits;
}

// ------------------------------------------------------- inside the copy

int _runPages(const BenchKit::Options &options, BenchKit::Table &table)
{
    const int parameters = std::atoi(options.value("--params", "3000").c_str());
    const int runs = options.runs > 0 ? options.runs : parameters >= 3000 ? 5 : 9;
    _ModalGuard guard;
    Manager manager;
    if (!manager.hasSchema())
        return 1;
    manager.show();
    _settle();

    ParamsTree *tree = manager.findChild<ParamsTree *>();
    ParamsWidget *pages = manager.findChild<ParamsWidget *>();
    ParameterComplex *root = manager.getRootParameter();
    const QString service = manager.getService();
    if (!tree || !pages || service.isEmpty()) {
        std::fprintf(stderr, "the configuration did not open\n");
        return 1;
    }
    QMap<QModelIndex, ParamsArea *> *map = nullptr;
    const QString word = QStringLiteral("limit");
    const int hits = _hits(manager.getSimpleParamsList(), word);

    // Two sections far apart, so that each selection really switches pages.
    const QModelIndex first = tree->model()->index(1, 0);
    const QModelIndex last = tree->model()->index(tree->model()->rowCount() - 1, 0);
    int turn = 0;

    const std::vector<double> medians = BenchKit::medianSeconds(
        runs, {
                  {[&] { map = tree->createAreas(root, service); },
                   [&] {
                       pages->setAreas(map);
                       emit manager.sig_configOpened(true);
                       _settle();
                   }},
                  {[&] {
                       pages->setAreas(tree->createAreas(root, service));
                       emit manager.sig_configOpened(true);
                       _settle();
                   },
                   nullptr},
                  {[&] {
                       tree->selectItem(tree->model()->index((turn++ % 2) ? last.row() : first.row(), 0));
                       _settle();
                   },
                   nullptr},
                  {[&] {
                       emit tree->sig_valuesUpdate();
                       _settle();
                   },
                   nullptr},
                  {[&] {
                       manager.sl_searchAreaUpdate(word);
                       _settle();
                   },
                   nullptr},
              });
    const std::string n = _n(parameters);
    table.add("createAreas_" + n + "_ms", medians[0] * 1e3);
    table.add("reopen_pages_" + n + "_ms", medians[1] * 1e3);
    table.add("select_" + n + "_ms", medians[2] * 1e3);
    table.add("refresh_" + n + "_ms", medians[3] * 1e3);
    table.add("search_" + _n(hits) + "hits_of_" + n + "_ms", medians[4] * 1e3);
    std::printf("%d parameters, %d in the search list, %d hits for \"%s\"\n", parameters,
                manager.getSimpleParamsList().size(), hits, qPrintable(word));
    return guard.seen() == 0 ? 0 : 1;
}

int _runMemory(const BenchKit::Options &options, BenchKit::Table &table)
{
    const int parameters = std::atoi(options.value("--params", "3000").c_str());
    _ModalGuard guard;
    const long before = BenchKit::peakResidentKb();
    Manager manager;
    if (!manager.hasSchema())
        return 1;
    manager.show();
    _settle();
    const long peak = BenchKit::peakResidentKb();

    const QString word = QStringLiteral("limit");
    std::vector<double> added;
    for (int page = 0; page < 5; ++page) {
        const long rss = BenchKit::residentKb();
        manager.sl_searchAreaUpdate(word);
        _settle();
        added.push_back(double(BenchKit::residentKb() - rss) / 1024.0);
    }
    // Typing the word letter by letter: a page for each prefix, all kept.
    const long beforeTyping = BenchKit::residentKb();
    for (int letters = 1; letters <= word.size(); ++letters) {
        manager.sl_searchAreaUpdate(word.left(letters));
        _settle();
    }
    const std::string n = _n(parameters);
    table.add("peak_rss_open_" + n + "_MB", double(peak) / 1024.0, double(before) / 1024.0);
    table.add("rss_per_search_page_" + _n(_hits(manager.getSimpleParamsList(), word)) + "hits_MB",
              BenchKit::median(added));
    table.add("rss_typing_" + word.toStdString() + "_" + n + "_MB",
              double(BenchKit::residentKb() - beforeTyping) / 1024.0);
    return guard.seen() == 0 ? 0 : 1;
}

int _runPaste(const BenchKit::Options &options, BenchKit::Table &table)
{
    const int count = std::atoi(options.value("--sets", "20000").c_str());
    const int runs = options.runs > 0 ? options.runs : 5;
    const std::vector<ScaleGen::Set> source =
        ScaleGen::readSets(QString::fromStdString(options.value("--tle-source", ORVEX_BENCH_TLE_SOURCE)));
    const std::vector<ScaleGen::Set> sets = ScaleGen::catalogue(source, count);
    if (sets.empty())
        return 1;
    _ModalGuard guard;

    // Declared before the window, so that it outlives the editor that points into it.
    const std::unique_ptr<ParameterComplex> root(new ParameterComplex(nullptr, "root", Parameter::VisualParams()));
    auto *list = new ParameterListTLEs(root.get(), "Satellites", "TLE", Parameter::VisualParams());
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *frame = new ParamSimple(list, &window);
    layout->addWidget(frame);
    window.resize(900, 500);
    window.show();
    emit frame->sig_update();
    _settle();
    QPlainTextEdit *field = frame->findChild<QPlainTextEdit *>();
    if (!field)
        return 1;

    // As the catalogue file lays it out, and the same sets without the empty
    // lines between them, which the field must then put in everywhere.
    const std::string spaced = ScaleGen::catalogueText(sets);
    std::string dense;
    for (const ScaleGen::Set &set : sets)
        dense += set.name + '\n' + set.line1 + '\n' + set.line2 + '\n';
    // The normal form: sets apart by one empty line, and "\n\n" behind the last.
    const QString expected = QString::fromStdString(spaced.substr(0, spaced.size() - 1)) + QStringLiteral("\n\n");

    bool shown = true;
    const std::size_t setCount = sets.size();
    const BenchKit::Operation paste{[field] {
                                        field->paste();
                                        _settle();
                                    },
                                    [&shown, &expected, setCount, field, list] {
                                        shown = shown && field->toPlainText() == expected
                                                && list->getTLEs().size() == setCount;
                                        // Back to an empty field without running its handler.
                                        field->blockSignals(true);
                                        field->clear();
                                        field->blockSignals(false);
                                        list->setTLEs({});
                                    }};
    std::vector<double> medians;
    for (const std::string &text : {spaced, dense}) {
        QApplication::clipboard()->setText(QString::fromStdString(text));
        medians.push_back(BenchKit::medianSeconds(runs, {paste}).front());
    }
    if (!shown) {
        std::fprintf(stderr, "the field does not show the pasted sets in normal form\n");
        return 1;
    }
    const double megabytes = double(spaced.size()) / 1e6;
    table.add("paste_" + _n(count) + "_sets_ms", medians[0] * 1e3);
    table.add("paste_" + _n(count) + "_sets_dense_ms", medians[1] * 1e3);
    std::printf("paste: %d sets, %.2f MB\n", count, megabytes);
    return guard.seen() == 0 ? 0 : 1;
}

// The TLE editor's button row draws a warning from Qt at every build, as it
// must; at thousands of pages the log would bury the figures.
QtMessageHandler _fallback = nullptr;

void _quietLayoutWarnings(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (message.startsWith(QLatin1String("QLayout: Attempting to add QLayout")))
        return;
    if (_fallback)
        _fallback(type, context, message);
    else
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

int _inside(int argc, char **argv)
{
    _fallback = qInstallMessageHandler(_quietLayoutWarnings);
    // The program's own start: numbers always with the decimal point.
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    BenchKit::Options options;
    // argv[1] is the configuration for the main window, as on the command line.
    if (!BenchKit::parseOptions(argc - 1, argv + 1, {std::begin(_valued), std::end(_valued)}, &options))
        return 2;
    BenchKit::Table table;
    const std::string scenario = options.value("--inside", "");
    int status = 2;
    if (scenario == "pages")
        status = _runPages(options, table);
    else if (scenario == "memory")
        status = _runMemory(options, table);
    else if (scenario == "paste")
        status = _runPaste(options, table);
    table.print();
    if (status == 0 && !options.csv.empty() && !table.appendCsv(options.csv))
        status = 1;
    return status;
}

// ------------------------------------------------------------ the driver

bool _copy(const QString &from, const QString &to)
{
    QFile::remove(to);
    return QFile::copy(from, to);
}

// Lays out `dir` as beside the installed program and returns the path of the
// configuration; the generated configuration is also the default of its service.
QString _prepare(const QString &dir, int parameters, const std::vector<ScaleGen::Set> &source)
{
    const QString defaults = dir + QStringLiteral("/orvex/default");
    const QString conf = dir + QStringLiteral("/orvex/conf");
    ScaleGen::Configuration made;
    if (!QDir().mkpath(defaults) || !QDir().mkpath(conf)
        || !ScaleGen::makeConfiguration(defaults, parameters, source, 10, &made))
        return QString();
    const QString config = conf + QStringLiteral("/config.conf");
    if (!_copy(made.configPath, config)
        || !_copy(made.configPath, defaults + QLatin1Char('/') + made.service + QStringLiteral("-default.conf"))
        || !QFile::remove(made.configPath))
        return QString();
    return config;
}

int _runChild(const QString &scenario, int size, const BenchKit::Options &options,
              const std::vector<ScaleGen::Set> &source)
{
    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    QString config = QStringLiteral("-");
    if (scenario != QLatin1String("paste")) {
        config = _prepare(dir.path(), size, source);
        if (config.isEmpty()) {
            std::fprintf(stderr, "cannot write the files for %d parameters\n", size);
            return 1;
        }
    }
    const QString program = dir.filePath(QStringLiteral("bench_gui_scale"));
    if (!_copy(QCoreApplication::applicationFilePath(), program))
        return 1;

    QStringList arguments{config, QStringLiteral("--inside"), scenario};
    arguments << (scenario == QLatin1String("paste") ? QStringLiteral("--sets") : QStringLiteral("--params"))
              << QString::number(size);
    if (options.runs > 0)
        arguments << QStringLiteral("--runs") << QString::number(options.runs);
    if (!options.csv.empty())
        arguments << QStringLiteral("--csv") << QString::fromStdString(options.csv);
    arguments << QStringLiteral("--clock")
              << (BenchKit::clock() == BenchKit::Clock::Wall ? QStringLiteral("wall") : QStringLiteral("cpu"));
    arguments << QStringLiteral("--tle-source")
              << QString::fromStdString(options.value("--tle-source", ORVEX_BENCH_TLE_SOURCE));

    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!environment.contains(QStringLiteral("QT_QPA_PLATFORM")))
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    if (!environment.contains(QStringLiteral("XDG_RUNTIME_DIR")))
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), dir.path());
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    child.start(program, arguments);
    if (!child.waitForFinished(-1) || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0) {
        std::fprintf(stderr, "the %s run at %d failed\n", qPrintable(scenario), size);
        return 1;
    }
    return 0;
}

void _usage(const char *program)
{
    std::printf("usage: %s [--scenarios pages,memory,paste] [--sizes 300,3000] [--runs N]\n"
                "          [--clock cpu|wall] [--tle-source FILE] [--csv FILE]\n"
                "  pages runs at each size, memory at the largest, paste with 20,000 sets.\n"
                "  Times in ms of process CPU time (or wall time), medians; memory in MB.\n",
                program);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc > 2 && std::string(argv[2]) == "--inside")
        return _inside(argc, argv);

    QCoreApplication application(argc, argv);
    BenchKit::Options options;
    if (!BenchKit::parseOptions(argc, argv, {std::begin(_valued), std::end(_valued)}, &options)
        || options.values.count("--inside")) {
        _usage(argv[0]);
        return 2;
    }
    const std::vector<ScaleGen::Set> source = ScaleGen::readSets(
        QString::fromStdString(options.value("--tle-source", ORVEX_BENCH_TLE_SOURCE)));
    if (source.empty()) {
        std::fprintf(stderr, "no element sets to copy\n");
        return 1;
    }
    std::vector<int> sizes;
    for (const QString &size : QString::fromStdString(options.value("--sizes", "300,3000")).split(QLatin1Char(',')))
        sizes.push_back(size.toInt());
    const QStringList scenarios =
        QString::fromStdString(options.value("--scenarios", "pages,memory,paste")).split(QLatin1Char(','));

    int status = 0;
    if (scenarios.contains(QStringLiteral("pages"))) {
        for (int size : sizes)
            status |= _runChild(QStringLiteral("pages"), size, options, source);
    }
    if (scenarios.contains(QStringLiteral("memory")))
        status |= _runChild(QStringLiteral("memory"), sizes.back(), options, source);
    if (scenarios.contains(QStringLiteral("paste")))
        status |= _runChild(QStringLiteral("paste"), std::atoi(options.value("--sets", "20000").c_str()),
                            options, source);
    return status;
}
