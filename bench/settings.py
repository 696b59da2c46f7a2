"""What a script of one's own takes for the same import: inventory settings into an account file.

    bench/settings.py ACCOUNT.db REQUEST.xml

Makes ACCOUNT.db with the tables that the checks need and the items that REQUEST.xml asks for, then imports; prints how
many seconds the import alone took, on the clock and of the processor. Durability is that of `kovra`: each row is committed for itself into a write-ahead log, which is synchronised
once at the end.
"""

import os
import sqlite3
import sys
import time

from lxml import etree

TABLES = """
PRAGMA journal_mode = WAL;
CREATE TABLE inventory (cInvCode TEXT COLLATE NOCASE PRIMARY KEY, bService INT, bInvType INT, bPTOModel INT);
CREATE TABLE inventoryclass (cInvCCode TEXT COLLATE NOCASE PRIMARY KEY);
CREATE TABLE Warehouse (cWhCode TEXT COLLATE NOCASE PRIMARY KEY);
CREATE TABLE code (ccode TEXT COLLATE NOCASE, iyear INT, bend INT, PRIMARY KEY (ccode, iyear));
CREATE TABLE IA_HeadSet (AutoID INTEGER PRIMARY KEY AUTOINCREMENT, cWhCode TEXT COLLATE NOCASE,
    cInvCCode TEXT COLLATE NOCASE, cInvHead TEXT, cDifHead TEXT, cOutHead TEXT, cEnDispHead TEXT, czyHead TEXT,
    cInvCode TEXT COLLATE NOCASE, iYear INT);
CREATE INDEX setting_item ON IA_HeadSet (cInvCode, iYear, cWhCode);
CREATE INDEX setting_class ON IA_HeadSet (cInvCCode, iYear, cWhCode);
CREATE INDEX setting_warehouse ON IA_HeadSet (cWhCode, iYear);
INSERT INTO Warehouse VALUES ('01');
INSERT INTO code VALUES ('1405', 2023, 1), ('1404', 2023, 1);
"""
KEYS = ("cWhCode", "cInvCCode", "cInvCode")
ACCOUNTS = ("cInvHead", "cDifHead", "cOutHead", "cEnDispHead", "czyHead")
FIELDS = KEYS + ACCOUNTS
CHECKS = {
    "cInvCode": "SELECT 1 FROM inventory WHERE cInvCode = ? AND bService = 0 AND bInvType = 0 AND bPTOModel = 0",
    "cInvCCode": "SELECT 1 FROM inventoryclass WHERE cInvCCode = ?",
    "cWhCode": "SELECT 1 FROM Warehouse WHERE cWhCode = ?",
}
ACCOUNT = "SELECT 1 FROM code WHERE ccode = ? AND bend = 1 AND iyear = 2023"


def import_row(database, row):
    values = {field: row.findtext(field) or None for field in FIELDS}
    for field in FIELDS:
        if values[field] and not database.execute(CHECKS.get(field, ACCOUNT), (values[field],)).fetchone():
            return "101", field
    given = [key for key in KEYS if values[key]]
    where = " AND ".join(key + " = ?" for key in given)
    match = "SELECT AutoID FROM IA_HeadSet WHERE " + where + " AND iYear = 2023"
    if database.execute(match, [values[key] for key in given]).fetchone():
        return "101", "known"
    places = ", ".join("?" * len(FIELDS))
    database.execute(f"INSERT INTO IA_HeadSet ({', '.join(FIELDS)}, iYear) VALUES ({places}, 2023)",
                     [values[field] for field in FIELDS])
    return "0", "ok"


def run(file, text):
    database = sqlite3.connect(file, isolation_level=None)
    database.execute("PRAGMA synchronous = NORMAL")
    result = etree.Element("qxinterface")
    for row in etree.fromstring(text).iter("subject"):
        code, message = import_row(database, row)
        etree.SubElement(result, "item", key=row.findtext("cInvCode"), code=code, dsc=message)
    log = os.open(file + "-wal", os.O_RDWR)
    os.fdatasync(log)
    os.close(log)
    return etree.tostring(result)


def main(file, request):
    for ending in ("", "-wal", "-shm"):
        if os.path.exists(file + ending):
            os.remove(file + ending)
    with open(request, "rb") as stream:
        text = stream.read()
    database = sqlite3.connect(file, isolation_level=None)
    database.executescript(TABLES)
    items = [(row.findtext("cInvCode"), 0, 0, 0) for row in etree.fromstring(text).iter("subject")]
    database.execute("BEGIN")
    database.executemany("INSERT INTO inventory VALUES (?, ?, ?, ?)", items)
    database.execute("COMMIT")
    database.close()
    begin, processor = time.perf_counter(), time.process_time()
    result = run(file, text)
    wall, processor = time.perf_counter() - begin, time.process_time() - processor
    if result.count(b'code="0"') != len(items):
        sys.exit("the request is not accepted")
    print(wall, processor)


main(*sys.argv[1:])
