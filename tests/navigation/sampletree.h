// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "paramfixture.h"

// A tree that has a bit of everything the section tree decides on:
//
//   config
//   |- version        leaf, importance 0                  "Version"
//   |- main           section                              "Main"
//   |  |- a           leaf, importance 1                   "Alpha"
//   |  |- deep        section                              "Deep"
//   |  |  '- deeper   section                              "Deeper"
//   |  |     '- g0    leaf, importance 0                   "Deep zero"
//   |  |- tles        TLE list, importance 0               "TLE sets"
//   |  |- hz          hidden leaf, importance 0            "Hidden zero"
//   |  '- after       section                              "After"
//   |     '- b        leaf                                 "Beta"
//   |- hiddenleaves   section                              "Hidden leaves"
//   |  |- h1          hidden leaf                          "Hidden one"
//   |  '- inner       section                              "Inner"
//   |     '- h2       leaf for service B only              "Hidden two"
//   |- invisible      hidden section                       "Invisible"
//   |  |- iz          leaf, importance 0                   "Invisible zero"
//   |  '- shown       section                              "Shown"
//   |     '- s        leaf                                 "Ess"
//   |- onlyb          section for service B only           "Only B"
//   |  '- bz          leaf, importance 0                   "B zero"
//   |- groups         section of sections                  "Groups"
//   |  |- g1          section                              "Group one"
//   |  |  '- x        leaf                                 "Ex"
//   |  '- g2          section                              "Group two"
//   |     '- y        leaf                                 "Why"
//   '- mixed          section                              "Mixed"
//      |- m1          leaf                                 "M one"
//      |- sub         section                              "Sub"
//      |  '- z        leaf                                 "Zed"
//      |- m2          list, importance 0                   "M two"
//      '- m3          leaf for service A only              "M three"
struct SampleTree
{
    std::unique_ptr<ParameterComplex> root = fixture::root();
    ParameterSimple *version = nullptr;
    ParameterComplex *main = nullptr;
    ParameterSimple *g0 = nullptr;
    ParameterListTLEs *tles = nullptr;
    ParameterComplex *mixed = nullptr;
    ParameterComplex *groups = nullptr;
    ParameterComplex *hiddenLeaves = nullptr;

    SampleTree()
    {
        using namespace fixture;
        version = leaf(root.get(), "version", {"Version", 0}, ParameterSimple::String);

        main = section(root.get(), "main", {"Main"});
        leaf(main, "a", {"Alpha", 1});
        ParameterComplex *deep = section(main, "deep", {"Deep"});
        ParameterComplex *deeper = section(deep, "deeper", {"Deeper"});
        g0 = leaf(deeper, "g0", {"Deep zero", 0});
        tles = fixture::tles(main, "tles", {"TLE sets", 0});
        leaf(main, "hz", {"Hidden zero", 0, false});
        ParameterComplex *after = section(main, "after", {"After"});
        leaf(after, "b", {"Beta"});

        hiddenLeaves = section(root.get(), "hiddenleaves", {"Hidden leaves"});
        leaf(hiddenLeaves, "h1", {"Hidden one", 2, false});
        ParameterComplex *inner = section(hiddenLeaves, "inner", {"Inner"});
        leaf(inner, "h2", {"Hidden two", 2, true, {"B"}});

        ParameterComplex *invisible = section(root.get(), "invisible", {"Invisible", 2, false});
        leaf(invisible, "iz", {"Invisible zero", 0});
        ParameterComplex *shown = section(invisible, "shown", {"Shown"});
        leaf(shown, "s", {"Ess"});

        ParameterComplex *onlyB = section(root.get(), "onlyb", {"Only B", 2, true, {"B"}});
        leaf(onlyB, "bz", {"B zero", 0});

        groups = section(root.get(), "groups", {"Groups"});
        ParameterComplex *g1 = section(groups, "g1", {"Group one"});
        leaf(g1, "x", {"Ex"});
        ParameterComplex *g2 = section(groups, "g2", {"Group two"});
        leaf(g2, "y", {"Why"});

        mixed = section(root.get(), "mixed", {"Mixed"});
        leaf(mixed, "m1", {"M one"});
        ParameterComplex *sub = section(mixed, "sub", {"Sub"});
        leaf(sub, "z", {"Zed"});
        list(mixed, "m2", {"M two", 0});
        leaf(mixed, "m3", {"M three", 2, true, {"A"}});
    }
};
