// SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
// SPDX-License-Identifier: MIT

#pragma once

#include "tle/tlecomposer.h"

#include <string>
#include <vector>

class QByteArray;

// Reads OMM records (CCSDS Orbit Mean-Elements Message) in the forms the
// public catalogs serve: XML (an <ndm> of <omm>s, or one <omm>), CSV with a
// header row of keywords, JSON (an array of objects or one object) and KVN
// ("KEYWORD = value" lines). The form is told by the content, not the name.
class OmmReader
{
public:
    enum Format { Unknown, Xml, Csv, Json, Kvn };

    // The form of `content` from its first bytes; Unknown when it is none.
    static Format detect(QByteArray const &content);
    // The records of `content`, keyword -> value text, in their order. False,
    // with the reason in `error`, when the content is of no form or malformed.
    static bool read(
        QByteArray const &content, std::vector<TLEComposer::Fields> &records, std::string &error);
    // The TLE sets of the records of `content`, appended in order to `text`
    // as the TLE list writes its sets and counted in `sets`, and for each
    // record that can't be written one line naming the object and the reason,
    // appended to `refusals`. False, all untouched and the reason in `error`,
    // when the content can't be read or holds no record.
    static bool convert(QByteArray const &content, std::string &text, std::size_t &sets,
        std::vector<std::string> &refusals, std::string &error);
};
