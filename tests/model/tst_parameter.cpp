// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#include "model/parameter.h"
#include "parambuilders.h"

#include <QtTest>

#include <cmath>
#include <map>
#include <string>
#include <utility>
#include <vector>

using Strings = std::vector<std::string>;
using TLE = ParameterListTLEs::TLE;

Q_DECLARE_METATYPE(Strings)
Q_DECLARE_METATYPE(ParameterSimple::Fasets)
Q_DECLARE_METATYPE(ParameterSimple::SimpleType)

namespace QTest {
template <>
inline char *toString(std::string const &text)
{
    return toString(QString::fromStdString(text));
}
template <>
inline char *toString(Strings const &texts)
{
    QStringList list;
    for (std::string const &text : texts)
        list << QString::fromStdString(text);
    return toString(list);
}
} // namespace QTest

namespace {

// Every destructor run of the counted nodes, in the order it happened.
std::vector<Parameter const *> _destroyed;

// A node of the real class that notes its own destruction, so that the tear-down
// of a tree can be watched from outside.
template <class Base>
class Counted : public Base
{
public:
    template <class... Args>
    explicit Counted(Args &&...args) : Base(std::forward<Args>(args)...)
    {
    }
    ~Counted() override { _destroyed.push_back(this); }
};

Parameter::VisualParams _visual(Strings const &services = {}, bool isvisible = true)
{
    Parameter::VisualParams visual;
    visual.services = services;
    visual.isvisible = isvisible;
    return visual;
}

using builders::atLeast;
using builders::enumeration;
using builders::range;

ParameterSimple *_leaf(ParameterComplex *parent, std::string const &key,
                       Parameter::VisualParams const &visual = Parameter::VisualParams())
{
    return new ParameterSimple(parent, key, visual, ParameterSimple::String,
                               ParameterSimple::Fasets());
}

TLE _tle(std::string const &name)
{
    return TLE{name, "1 25544U 98067A   18020.89808844  .00002078  00000-0  38550-4 0  9992",
               "2 25544  51.6424  32.9776 0003646  28.7227  39.5332 15.54190080 95614"};
}

} // namespace

class TestParameter : public QObject
{
    Q_OBJECT

private slots:
    // The tree and visibility
    void constructorsLinkNodesIntoTheirParent();
    void isVisibleFollowsFlagAndServices_data();
    void isVisibleFollowsFlagAndServices();
    void sectionWithoutChildrenIsNotVisibleRec();
    void sectionOfInvisibleLeavesIsNotVisibleRec();
    void sectionWithVisibleLeafThreeLevelsDownIsVisibleRec();
    void leafBelowInvisibleSectionIsVisibleItself();
    void addChildPtrRefusesPresentNode();
    void addChildPtrRefusesNodeOfParentsLevel();
    void deletingRootFreesEveryNodeOnceInIndexOrder();

    // Text to numbers
    void value2int_data();
    void value2int();
    void value2double_data();
    void value2double();
    void value2bool_data();
    void value2bool();

    // Simple parameters
    void checkValue_data();
    void checkValue();
    void setValueStoresAcceptedTextUnchanged();
    void refusedSetValueKeepsEarlierValue();
    void booleanAcceptsAnyWordThatThenReadsAsFalse();

    // List parameters
    void setValuesWithNothingRefusedAtMinimumOne();
    void setValuesWithNothingEmptiesListAtMinimumZero();
    void setValuesTestsMinimumOnlyAgainstEmptyList();
    void setValuesRefusesMoreItemsThanMaximum();
    void setValuesRefusesBadItemAndKeepsEarlierItems();
    void integerItemsAreHeldAgainstMinOccurs_data();
    void integerItemsAreHeldAgainstMinOccurs();
    void stringListAcceptsAnyText();
    void addValueAcceptsEmptyTextForEveryType_data();
    void addValueAcceptsEmptyTextForEveryType();
    void addValueLeavesMirroredValueAlone();
    void removeValueLeavesMirroredValueAlone();
    void removeValuePastEndIsRefused();
    void checkValuesOfEmptyListIsTrue();
    void setTLEsWithNothingEmptiesList();
    void setTLEAppends();
};

// ----------------------------------------------------------------- the tree

void TestParameter::constructorsLinkNodesIntoTheirParent()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *section = new ParameterComplex(&root, "section", Parameter::VisualParams());
    auto *leaf = _leaf(section, "leaf");
    auto *list = new ParameterList(section, "list", "item", Parameter::VisualParams(),
                                   ParameterSimple::Integer, atLeast(1));
    auto *tles = new ParameterListTLEs(&root, "tles", "TLE", Parameter::VisualParams());

    QCOMPARE(root.getLevel(), 0u);
    QVERIFY(root.getParantPtr() == nullptr);
    QCOMPARE(section->getLevel(), 1u);
    QCOMPARE(leaf->getLevel(), 2u);
    QVERIFY(leaf->getParantPtr() == section);
    QVERIFY((root.getChildrenPtrs() == std::vector<Parameter *>{section, tles}));
    QVERIFY((section->getChildrenPtrs() == std::vector<Parameter *>{leaf, list}));

    QCOMPARE(int(section->getGlobalType()), int(Parameter::GlobalType::Complex));
    QCOMPARE(int(leaf->getGlobalType()), int(Parameter::GlobalType::Simple));
    QCOMPARE(int(list->getGlobalType()), int(Parameter::GlobalType::List));
    QCOMPARE(list->getListKey(), std::string("item"));
    QCOMPARE(int(tles->getGlobalType()), int(Parameter::GlobalType::ListTLEs));
    QCOMPARE(int(tles->getSimpleType()), int(ParameterSimple::TLE));
    QCOMPARE(tles->getFasets().kind, int(ParameterSimple::FasetNone));
    QCOMPARE(tles->getListKey(), std::string("TLE"));

    Parameter::VisualParams const defaults;
    QCOMPARE(defaults.importance, 2);
    QVERIFY(defaults.isvisible);
    QVERIFY(leaf->getValue().empty());
}

void TestParameter::isVisibleFollowsFlagAndServices_data()
{
    QTest::addColumn<Strings>("services");
    QTest::addColumn<bool>("isvisible");
    QTest::addColumn<QString>("service");
    QTest::addColumn<bool>("visible");

    QTest::newRow("no services, any service") << Strings{} << true << "survey" << true;
    QTest::newRow("listed service") << Strings{"tracking", "survey"} << true << "survey" << true;
    QTest::newRow("unlisted service") << Strings{"tracking"} << true << "survey" << false;
    QTest::newRow("hidden though the service is listed")
        << Strings{"tracking", "survey"} << false << "survey" << false;
    QTest::newRow("hidden without services") << Strings{} << false << "survey" << false;
    QTest::newRow("no services, empty service name") << Strings{} << true << "" << true;
    QTest::newRow("services, empty service name") << Strings{"tracking"} << true << "" << false;
    QTest::newRow("empty entry, empty service name")
        << Strings{"tracking", ""} << true << "" << false;
    QTest::newRow("entry differs in case") << Strings{"Survey"} << true << "survey" << false;
    QTest::newRow("service differs in case") << Strings{"survey"} << true << "SURVEY" << false;
}

void TestParameter::isVisibleFollowsFlagAndServices()
{
    QFETCH(Strings, services);
    QFETCH(bool, isvisible);
    QFETCH(QString, service);
    QFETCH(bool, visible);

    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *leaf = _leaf(&root, "leaf", _visual(services, isvisible));
    auto *section = new ParameterComplex(&root, "section", _visual(services, isvisible));
    _leaf(section, "inner");

    QCOMPARE(leaf->isVisible(service.toStdString()), visible);
    QCOMPARE(section->isVisible(service.toStdString()), visible);
}

void TestParameter::sectionWithoutChildrenIsNotVisibleRec()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *empty = new ParameterComplex(&root, "empty", Parameter::VisualParams());

    QVERIFY(empty->isVisible("tracking"));
    QVERIFY(!empty->isVisible_rec("tracking"));
}

void TestParameter::sectionOfInvisibleLeavesIsNotVisibleRec()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *section = new ParameterComplex(&root, "section", Parameter::VisualParams());
    _leaf(section, "hidden", _visual({}, false));
    _leaf(section, "otherService", _visual({"survey"}));

    QVERIFY(section->isVisible("tracking"));
    QVERIFY(!section->isVisible_rec("tracking"));
    QVERIFY(!root.isVisible_rec("tracking"));
}

void TestParameter::sectionWithVisibleLeafThreeLevelsDownIsVisibleRec()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *a = new ParameterComplex(&root, "a", Parameter::VisualParams());
    _leaf(a, "hidden", _visual({}, false));
    auto *b = new ParameterComplex(a, "b", Parameter::VisualParams());
    auto *c = new ParameterComplex(b, "c", Parameter::VisualParams());
    auto *leaf = _leaf(c, "leaf", _visual({"tracking"}));

    QCOMPARE(leaf->getLevel() - a->getLevel(), 3u);
    QVERIFY(a->isVisible_rec("tracking"));
    QVERIFY(root.isVisible_rec("tracking"));
    // The same leaf is hidden for another service, and so is the whole branch.
    QVERIFY(!a->isVisible_rec("survey"));
}

void TestParameter::leafBelowInvisibleSectionIsVisibleItself()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *hidden = new ParameterComplex(&root, "hidden", _visual({"survey"}, false));
    auto *leaf = _leaf(hidden, "leaf");

    QVERIFY(!hidden->isVisible_rec("tracking"));
    QVERIFY(leaf->isVisible("tracking"));
}

void TestParameter::addChildPtrRefusesPresentNode()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *leaf = _leaf(&root, "leaf");

    QVERIFY(!root.addChildPtr(leaf));
    QCOMPARE(root.getChildrenPtrs().size(), std::size_t(1));
}

void TestParameter::addChildPtrRefusesNodeOfParentsLevel()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *section = new ParameterComplex(&root, "section", Parameter::VisualParams());
    auto *sibling = _leaf(&root, "sibling");

    QCOMPARE(sibling->getLevel(), section->getLevel());
    QVERIFY(!section->addChildPtr(sibling));
    QVERIFY(section->getChildrenPtrs().empty());
    // A node above the parent is refused as well: the tree is only built downwards.
    QVERIFY(!section->addChildPtr(&root));
    QVERIFY(!root.addChildPtr(nullptr));
    QCOMPARE(root.getChildrenPtrs().size(), std::size_t(2));
}

void TestParameter::deletingRootFreesEveryNodeOnceInIndexOrder()
{
    _destroyed.clear();
    Parameter::VisualParams const visual;
    auto *root = new Counted<ParameterComplex>(nullptr, std::string("root"), visual);
    auto *a = new Counted<ParameterComplex>(root, std::string("a"), visual);
    auto *a1 = new Counted<ParameterSimple>(a, std::string("a1"), visual, ParameterSimple::Integer,
                                            ParameterSimple::Fasets());
    auto *a2 = new Counted<ParameterComplex>(a, std::string("a2"), visual);
    auto *a21 = new Counted<ParameterList>(a2, std::string("a21"), std::string("item"), visual,
                                           ParameterSimple::String, atLeast(0));
    auto *b = new Counted<ParameterListTLEs>(root, std::string("b"), std::string("TLE"), visual);
    auto *c = new Counted<ParameterSimple>(root, std::string("c"), visual, ParameterSimple::String,
                                           ParameterSimple::Fasets());
    b->setTLE(_tle("ISS"));
    a21->addValue("x");
    // A counted node notes itself before its base deletes the children, so the
    // record is a pre-order walk: children first to last, each subtree whole.
    std::vector<Parameter const *> const expected{root, a, a1, a2, a21, b, c};

    delete root;

    QCOMPARE(_destroyed.size(), expected.size());
    QVERIFY(_destroyed == expected);

    std::map<Parameter const *, int> runs;
    for (Parameter const *node : _destroyed)
        ++runs[node];
    for (auto const &run : runs)
        QCOMPARE(run.second, 1);
}

// --------------------------------------------------------- text to numbers

void TestParameter::value2int_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");

    QTest::newRow("plain") << "42" << 42;
    QTest::newRow("negative") << "-7" << -7;
    QTest::newRow("plus sign") << "+5" << 5;
    QTest::newRow("leading blanks") << "  12" << 12;
    QTest::newRow("hexadecimal is read in base 10") << "0x10" << 0;
    QTest::newRow("trailing letters") << "12abc" << 12;
    QTest::newRow("decimal is cut") << "3.9" << 3;
    QTest::newRow("word") << "abc" << 0;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("low 32 bits kept") << "4294967297" << 1;
    QTest::newRow("low 32 bits as negative") << "4294967295" << -1;
}

void TestParameter::value2int()
{
    QFETCH(QString, text);
    QFETCH(int, number);
    QCOMPARE(ParameterSimple::value2int(text.toStdString()), number);
}

void TestParameter::value2double_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");

    QTest::newRow("plain") << "0.5" << 0.5;
    QTest::newRow("negative") << "-0.25" << -0.25;
    QTest::newRow("exponent") << "1.5e3" << 1500.0;
    QTest::newRow("hexadecimal float") << "0x1p4" << 16.0;
    QTest::newRow("trailing letters") << " 2.5mm" << 2.5;
    QTest::newRow("comma ends the number") << "1,5" << 1.0;
    QTest::newRow("word") << "abc" << 0.0;
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow("infinity") << "inf" << double(INFINITY);
    QTest::newRow("minus infinity") << "-infinity" << -double(INFINITY);
}

void TestParameter::value2double()
{
    QFETCH(QString, text);
    QFETCH(double, number);
    QCOMPARE(ParameterSimple::value2double(text.toStdString()), number);
}

void TestParameter::value2bool_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("truth");

    QTest::newRow("empty") << "" << false;
    QTest::newRow("true") << "true" << true;
    QTest::newRow("false") << "false" << false;
    QTest::newRow("upper-case TRUE") << "TRUE" << false;
    QTest::newRow("capitalised True") << "True" << false;
    QTest::newRow("yes") << "yes" << false;
    QTest::newRow("on") << "on" << false;
    QTest::newRow("true with a blank") << "true " << false;
    QTest::newRow("0") << "0" << false;
    QTest::newRow("1") << "1" << true;
    QTest::newRow("2") << "2" << true;
    QTest::newRow("-1") << "-1" << true;
    QTest::newRow("number then word") << "1abc" << true;
    QTest::newRow("low 32 bits zero") << "4294967296" << false;
}

void TestParameter::value2bool()
{
    QFETCH(QString, text);
    QFETCH(bool, truth);
    QCOMPARE(ParameterSimple::value2bool(text.toStdString()), truth);
}

// -------------------------------------------------------- simple parameters

void TestParameter::checkValue_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<ParameterSimple::Fasets>("fasets");
    QTest::addColumn<ParameterSimple::SimpleType>("type");
    QTest::addColumn<bool>("allowed");

    ParameterSimple::Fasets const none;
    auto const Integer = ParameterSimple::Integer;
    auto const Decimal = ParameterSimple::Decimal;

    QTest::newRow("integer, default upper bound") << "9999999" << none << Integer << true;
    QTest::newRow("integer, default lower bound") << "-9999999" << none << Integer << true;
    QTest::newRow("integer, above default bounds") << "10000000" << none << Integer << false;
    QTest::newRow("integer, below default bounds") << "-10000000" << none << Integer << false;

    QTest::newRow("integer 0.9..5.9, 0") << "0" << range(0.9, 5.9) << Integer << true;
    QTest::newRow("integer 0.9..5.9, 5") << "5" << range(0.9, 5.9) << Integer << true;
    QTest::newRow("integer 0.9..5.9, 6") << "6" << range(0.9, 5.9) << Integer << false;
    QTest::newRow("integer 0.9..5.9, -1") << "-1" << range(0.9, 5.9) << Integer << false;
    QTest::newRow("integer -0.5..5, 0") << "0" << range(-0.5, 5) << Integer << true;
    QTest::newRow("integer -0.5..5, -1") << "-1" << range(-0.5, 5) << Integer << false;

    QTest::newRow("decimal 0.5..1.5, 0.5") << "0.5" << range(0.5, 1.5) << Decimal << true;
    QTest::newRow("decimal 0.5..1.5, 1.5") << "1.5" << range(0.5, 1.5) << Decimal << true;
    QTest::newRow("decimal 0.5..1.5, 1.6") << "1.6" << range(0.5, 1.5) << Decimal << false;
    QTest::newRow("decimal 0.5..1.5, 0.4") << "0.4" << range(0.5, 1.5) << Decimal << false;
    QTest::newRow("decimal 0.5..1.5, nan") << "nan" << range(0.5, 1.5) << Decimal << false;
    QTest::newRow("decimal 0.5..1.5, inf") << "inf" << range(0.5, 1.5) << Decimal << false;
    QTest::newRow("decimal, default bounds, inf") << "inf" << none << Decimal << false;
    QTest::newRow("decimal, default bounds, -inf") << "-inf" << none << Decimal << false;
    QTest::newRow("decimal, default bounds, nan") << "nan" << none << Decimal << false;
    QTest::newRow("decimal, default upper bound") << "9999999.9" << none << Decimal << true;
    QTest::newRow("decimal, above default bounds") << "10000000" << none << Decimal << false;

    QTest::newRow("integer 1..10, word reads as 0") << "abc" << range(1, 10) << Integer << false;
    QTest::newRow("integer 0..10, word reads as 0") << "abc" << range(0, 10) << Integer << true;
    QTest::newRow("integer 1..20, number then word") << "12abc" << range(1, 20) << Integer << true;

    QTest::newRow("integer 1..10, empty") << "" << range(1, 10) << Integer << true;
    QTest::newRow("decimal 0.5..1.5, empty") << "" << range(0.5, 1.5) << Decimal << true;
    QTest::newRow("enumeration without empty entry, empty")
        << "" << enumeration({"1", "2"}) << Integer << false;
    QTest::newRow("enumeration with empty entry, empty")
        << "" << enumeration({"1", ""}) << Integer << true;

    ParameterSimple::Fasets both = enumeration({"0", "20"});
    both.minValue = 1;
    both.maxValue = 10;
    QTest::newRow("enumeration and bounds, listed outside bounds") << "20" << both << Integer << true;
    QTest::newRow("enumeration and bounds, unlisted inside bounds") << "5" << both << Integer << false;
    QTest::newRow("enumeration is case-sensitive")
        << "Survey" << enumeration({"survey"}) << ParameterSimple::String << false;
    QTest::newRow("enumeration holds for other types")
        << "/tmp" << enumeration({"/var"}) << ParameterSimple::Dirpath << false;

    QTest::newRow("string ignores bounds") << "-100000000" << range(5, 6) << ParameterSimple::String
                                           << true;
    QTest::newRow("boolean accepts a word") << "maybe" << none << ParameterSimple::Boolean << true;
    QTest::newRow("e-mail is not checked here") << "no at sign" << none << ParameterSimple::Email
                                                << true;
}

void TestParameter::checkValue()
{
    QFETCH(QString, value);
    QFETCH(ParameterSimple::Fasets, fasets);
    QFETCH(ParameterSimple::SimpleType, type);
    QFETCH(bool, allowed);
    QCOMPARE(ParameterSimple::checkValue(value.toStdString(), fasets, type), allowed);
}

void TestParameter::setValueStoresAcceptedTextUnchanged()
{
    ParameterSimple word(nullptr, "word", Parameter::VisualParams(), ParameterSimple::Integer,
                         range(0, 10));
    ParameterSimple padded(nullptr, "padded", Parameter::VisualParams(), ParameterSimple::Integer,
                           range(1, 20));

    // A word reads as 0, which lies in 0..10; the text is kept as it was given.
    QVERIFY(word.setValue("abc"));
    QCOMPARE(word.getValue(), std::string("abc"));
    QVERIFY(padded.setValue("12abc"));
    QCOMPARE(padded.getValue(), std::string("12abc"));
}

void TestParameter::refusedSetValueKeepsEarlierValue()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *number = new ParameterSimple(&root, "number", Parameter::VisualParams(),
                                       ParameterSimple::Integer, range(1, 10));
    auto *choice = new ParameterSimple(&root, "choice", Parameter::VisualParams(),
                                       ParameterSimple::String, enumeration({"a", "b"}));

    QVERIFY(number->setValue("7"));
    QVERIFY(!number->setValue("11"));
    QCOMPARE(number->getValue(), std::string("7"));
    QVERIFY(!number->setValue("abc"));
    QCOMPARE(number->getValue(), std::string("7"));

    QVERIFY(choice->setValue("b"));
    QVERIFY(!choice->setValue(""));
    QCOMPARE(choice->getValue(), std::string("b"));
}

void TestParameter::booleanAcceptsAnyWordThatThenReadsAsFalse()
{
    ParameterComplex root(nullptr, "root", Parameter::VisualParams());
    auto *flag = new ParameterSimple(&root, "flag", Parameter::VisualParams(),
                                     ParameterSimple::Boolean, ParameterSimple::Fasets());

    for (std::string const word : {"yes", "TRUE", "on", "enabled"}) {
        QVERIFY(flag->setValue(word));
        QCOMPARE(flag->getValue(), word);
        QVERIFY(!ParameterSimple::value2bool(flag->getValue()));
    }
    QVERIFY(flag->setValue("true"));
    QVERIFY(ParameterSimple::value2bool(flag->getValue()));
}

// ---------------------------------------------------------- list parameters

void TestParameter::setValuesWithNothingRefusedAtMinimumOne()
{
    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), ParameterSimple::String,
                       atLeast(1));
    QVERIFY(list.setValues({"a", "b"}));

    QVERIFY(!list.setValues({}));
    QCOMPARE(list.getValues(), (Strings{"a", "b"}));
    QCOMPARE(list.getValue(), std::string("a"));
}

void TestParameter::setValuesWithNothingEmptiesListAtMinimumZero()
{
    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), ParameterSimple::String,
                       atLeast(0));
    QVERIFY(list.setValues({"a", "b"}));
    QCOMPARE(list.getValue(), std::string("a"));

    QVERIFY(list.setValues({}));
    QVERIFY(list.getValues().empty());
    QVERIFY(list.getValue().empty());
}

void TestParameter::setValuesTestsMinimumOnlyAgainstEmptyList()
{
    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), ParameterSimple::String,
                       atLeast(3));

    // The exact count is the editor's business; the model tests only for none.
    QVERIFY(list.setValues({"only"}));
    QCOMPARE(list.getValues(), Strings{"only"});
}

void TestParameter::setValuesRefusesMoreItemsThanMaximum()
{
    ParameterSimple::Fasets fasets = atLeast(0);
    fasets.maxValue = 2.5;
    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), ParameterSimple::String,
                       fasets);
    QVERIFY(list.setValues({"a"}));

    QVERIFY(!list.setValues({"a", "b", "c"}));
    QCOMPARE(list.getValues(), Strings{"a"});
    QVERIFY(list.setValues({"b", "c"}));
    QCOMPARE(list.getValue(), std::string("b"));
}

void TestParameter::setValuesRefusesBadItemAndKeepsEarlierItems()
{
    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), ParameterSimple::Integer,
                       atLeast(1));
    QVERIFY(list.setValues({"3", "4"}));

    QVERIFY(!list.setValues({"5", "0", "6"}));
    QCOMPARE(list.getValues(), (Strings{"3", "4"}));
    QCOMPARE(list.getValue(), std::string("3"));
}

void TestParameter::integerItemsAreHeldAgainstMinOccurs_data()
{
    QTest::addColumn<int>("minOccurs");
    QTest::addColumn<QString>("item");
    QTest::addColumn<bool>("accepted");

    // The count limit doubles as the bound of each number: an odd coupling that
    // the schema reader sets up on purpose.
    QTest::newRow("minimum 1 refuses 0") << 1 << "0" << false;
    QTest::newRow("minimum 1 accepts 1") << 1 << "1" << true;
    QTest::newRow("minimum 0 accepts 0") << 0 << "0" << true;
    QTest::newRow("minimum 0 refuses -1") << 0 << "-1" << false;
    QTest::newRow("minimum 3 refuses 2") << 3 << "2" << false;
    QTest::newRow("upper bound is the default") << 0 << "10000000" << false;
}

void TestParameter::integerItemsAreHeldAgainstMinOccurs()
{
    QFETCH(int, minOccurs);
    QFETCH(QString, item);
    QFETCH(bool, accepted);

    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), ParameterSimple::Integer,
                       atLeast(minOccurs));

    QCOMPARE(list.addValue(item.toStdString()), accepted);
    QCOMPARE(list.getValues().size(), std::size_t(accepted ? 1 : 0));
    QCOMPARE(list.setValues({item.toStdString()}), accepted);
}

void TestParameter::stringListAcceptsAnyText()
{
    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), ParameterSimple::String,
                       atLeast(5));

    QVERIFY(list.addValue("-3"));
    QVERIFY(list.addValue("any text <at all>"));
    QVERIFY(list.addValue(""));
    QCOMPARE(list.getValues(), (Strings{"-3", "any text <at all>", ""}));
}

void TestParameter::addValueAcceptsEmptyTextForEveryType_data()
{
    QTest::addColumn<ParameterSimple::SimpleType>("type");

    for (int t = ParameterSimple::Integer; t <= ParameterSimple::FilterKeys; ++t) {
        auto const type = static_cast<ParameterSimple::SimpleType>(t);
        QTest::newRow(QByteArray::number(t).constData()) << type;
    }
}

void TestParameter::addValueAcceptsEmptyTextForEveryType()
{
    QFETCH(ParameterSimple::SimpleType, type);

    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), type, atLeast(1));

    QVERIFY(list.addValue(""));
    QCOMPARE(list.getValues(), Strings{""});
}

void TestParameter::addValueLeavesMirroredValueAlone()
{
    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), ParameterSimple::String,
                       atLeast(0));

    QVERIFY(list.addValue("first"));
    QCOMPARE(list.getValues(), Strings{"first"});
    QVERIFY(list.getValue().empty());
}

void TestParameter::removeValueLeavesMirroredValueAlone()
{
    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), ParameterSimple::String,
                       atLeast(1));
    QVERIFY(list.setValues({"first", "second"}));

    QVERIFY(list.removeValue(0));
    QCOMPARE(list.getValues(), Strings{"second"});
    QCOMPARE(list.getValue(), std::string("first"));
    // No minimum is kept here either: the last item may go.
    QVERIFY(list.removeValue(0));
    QVERIFY(list.getValues().empty());
}

void TestParameter::removeValuePastEndIsRefused()
{
    ParameterList list(nullptr, "list", "item", Parameter::VisualParams(), ParameterSimple::String,
                       atLeast(0));
    QVERIFY(list.setValues({"a", "b"}));

    QVERIFY(!list.removeValue(2));
    QVERIFY(!list.removeValue(7));
    QCOMPARE(list.getValues(), (Strings{"a", "b"}));
}

void TestParameter::checkValuesOfEmptyListIsTrue()
{
    QVERIFY(ParameterList::checkValues({}, atLeast(3), ParameterSimple::Integer));
    QVERIFY(!ParameterList::checkValues({"5", "2", "9"}, atLeast(3), ParameterSimple::Integer));
    QVERIFY(ParameterList::checkValues({"5", "3", "9"}, atLeast(3), ParameterSimple::Integer));
}

void TestParameter::setTLEsWithNothingEmptiesList()
{
    ParameterListTLEs list(nullptr, "satellites", "TLE", Parameter::VisualParams());
    list.setTLEs({_tle("ISS"), _tle("")});
    QCOMPARE(list.getTLEs().size(), std::size_t(2));

    list.setTLEs({});
    QVERIFY(list.getTLEs().empty());
    QVERIFY(list.getValue().empty());
}

void TestParameter::setTLEAppends()
{
    ParameterListTLEs list(nullptr, "satellites", "TLE", Parameter::VisualParams());

    list.setTLE(_tle("ISS"));
    list.setTLE(_tle("NOAA 19"));

    std::vector<TLE> const tles = list.getTLEs();
    QCOMPARE(tles.size(), std::size_t(2));
    QCOMPARE(tles[0].line0, std::string("ISS"));
    QCOMPARE(tles[1].line0, std::string("NOAA 19"));
    QCOMPARE(tles[1].line1, _tle("").line1);
}

QTEST_APPLESS_MAIN(TestParameter)

#include "tst_parameter.moc"
