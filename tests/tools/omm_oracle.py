#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 Orvex Config Manager maintainers
# SPDX-License-Identifier: MIT
"""The independent side of the OMM import tests.

Reads real element sets, has Debian's python3-sgp4 write their OMM fields
(sgp4.exporter.export_omm), and writes them in the four forms that
"orvexctl tle-import" reads, beside the sets that the import must give back:

  OUTDIR/real.{xml,csv,json,kvn}    the sets as they are,  OUTDIR/real.tle
  OUTDIR/alpha5.{xml,csv,json,kvn}  the same sets renumbered from 100000
                                    to 339999,               OUTDIR/alpha5.tle

Usage: omm_oracle.py OUTDIR FILE.tle...
"""
import csv
import io
import json
import sys
from xml.sax.saxutils import escape

from sgp4 import exporter
from sgp4.api import Satrec

ORDER = ["OBJECT_NAME", "OBJECT_ID", "CENTER_NAME", "REF_FRAME", "TIME_SYSTEM",
         "MEAN_ELEMENT_THEORY", "EPOCH", "MEAN_MOTION", "ECCENTRICITY", "INCLINATION",
         "RA_OF_ASC_NODE", "ARG_OF_PERICENTER", "MEAN_ANOMALY", "EPHEMERIS_TYPE",
         "CLASSIFICATION_TYPE", "NORAD_CAT_ID", "ELEMENT_SET_NO", "REV_AT_EPOCH", "BSTAR",
         "MEAN_MOTION_DOT", "MEAN_MOTION_DDOT"]
METADATA = ORDER[0:6]
MEAN_ELEMENTS = ORDER[6:13]
TLE_PARAMETERS = ORDER[13:]
LETTERS = "ABCDEFGHJKLMNPQRSTUVWXYZ"


def check_digit(line):
    total = sum(int(c) if c.isdigit() else (1 if c == "-" else 0) for c in line[:68])
    return str(total % 10)


def with_check_digit(line):
    return line[:68] + check_digit(line)


def catalog_field(number):
    head, rest = divmod(number, 10000)
    return (str(head) if head < 10 else LETTERS[head - 10]) + "%04d" % rest


def read_sets(path):
    """Name and both data lines of every set whose check digits are right and
    that has an international designator (export_omm needs one)."""
    lines = [l.rstrip("\r\n") for l in open(path, encoding="latin-1")]
    sets, name = [], None
    for i, line in enumerate(lines):
        if line.startswith("1 ") and i + 1 < len(lines) and lines[i + 1].startswith("2 "):
            l1, l2 = line[:69], lines[i + 1][:69]
            if (check_digit(l1) == l1[68] and check_digit(l2) == l2[68]
                    and l1[9:17].strip()):
                sets.append(((name or "").strip(), l1, l2))
            name = None
        elif not line.startswith("2 ") and line.strip() and not line.startswith("#"):
            name = line
    return sets


def expected_lines(l1, l2):
    """The lines the import must give: an exponent of zero is written "-0"
    for a value of zero and "+0" otherwise, as an OMM's number can't tell
    which sign the TLE had."""
    for start in (44, 53):
        field = l1[start:start + 8]
        if field[6:8] in ("-0", "+0"):
            sign = "-" if int(field[1:6]) == 0 else "+"
            field = (" " if sign == "-" else field[0]) + field[1:6] + sign + "0"
            l1 = l1[:start] + field + l1[start + 8:]
    return with_check_digit(l1), l2


def records(sets):
    result = []
    for i, (name, l1, l2) in enumerate(sets):
        omm = exporter.export_omm(Satrec.twoline2rv(l1, l2), name or "OBJECT %d" % i)
        result.append((omm, expected_lines(l1, l2)))
    return result


def renumbered(recs):
    """The same records with catalog numbers from 100000 to 339999."""
    result = []
    for i, (omm, (l1, l2)) in enumerate(recs):
        number = 339999 if i == 1 else 100000 + (i * 7919) % 240000
        field = catalog_field(number)
        omm = dict(omm, NORAD_CAT_ID=number)
        result.append((omm, (with_check_digit(l1[:2] + field + l1[7:]),
                             with_check_digit(l2[:2] + field + l2[7:]))))
    return result


def text(value):
    return repr(value) if isinstance(value, float) else str(value)


def xml(recs):
    out = ['<?xml version="1.0" encoding="UTF-8"?>',
           '<ndm xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">']
    for omm, _ in recs:
        def group(tag, keys):
            return "<%s>%s</%s>" % (tag, "".join(
                "<%s>%s</%s>" % (k, escape(text(omm[k])), k) for k in keys), tag)
        out.append('<omm id="CCSDS_OMM_VERS" version="2.0"><header><CREATION_DATE/>'
                   '<ORIGINATOR/></header><body><segment>' + group("metadata", METADATA)
                   + "<data>" + group("meanElements", MEAN_ELEMENTS)
                   + group("tleParameters", TLE_PARAMETERS) + "</data></segment></body></omm>")
    out.append("</ndm>")
    return "\n".join(out) + "\n"


def csv_text(recs):
    # Columns in another order than the catalogs', CR LF line ends.
    columns = list(reversed(ORDER))
    buffer = io.StringIO()
    writer = csv.writer(buffer, lineterminator="\r\n")
    writer.writerow(columns)
    for omm, _ in recs:
        writer.writerow([text(omm[k]) for k in columns])
    return buffer.getvalue()


def json_text(recs):
    # Every other record with its numbers as strings.
    objects = [omm if i % 2 == 0 else {k: text(v) for k, v in omm.items()}
               for i, (omm, _) in enumerate(recs)]
    return json.dumps(objects, indent=1)


def kvn(recs):
    out = []
    for omm, _ in recs:
        out += ["CCSDS_OMM_VERS = 2.0", "CREATION_DATE = 2026-11-23T00:00:00",
                "ORIGINATOR = TEST"]
        out += ["%s = %s" % (k, text(omm[k])) for k in ORDER]
    return "\n".join(out) + "\n"


def tle(recs):
    return "".join("%s\n%s\n%s\n" % (omm["OBJECT_NAME"], l1, l2) for omm, (l1, l2) in recs)


def write(path, content):
    with open(path, "w", encoding="utf-8", newline="") as f:
        f.write(content)


def main():
    outdir, files = sys.argv[1], sys.argv[2:]
    sets = [s for path in files for s in read_sets(path)]
    real = records(sets)
    for stem, recs in (("real", real), ("alpha5", renumbered(real))):
        write("%s/%s.xml" % (outdir, stem), xml(recs))
        write("%s/%s.csv" % (outdir, stem), csv_text(recs))
        write("%s/%s.json" % (outdir, stem), json_text(recs))
        write("%s/%s.kvn" % (outdir, stem), kvn(recs))
        write("%s/%s.tle" % (outdir, stem), tle(recs))


if __name__ == "__main__":
    main()
