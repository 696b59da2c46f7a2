"""Imports one request:  python kovra_import.py CLASS REQUEST.xml LOGIN.xml

Takes pywin32 (`pip install pywin32`), in the size (32 or 64 bits) of the Kovra.dll that is registered.
"""

import codecs
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree
from collections import namedtuple

Outcome = namedtuple("Outcome", "row key code message")
"""What came of one row: `row` is counted from 1 and None where the result does not tell; `code` is 0 for an accepted row."""


class RefusedRequest(Exception):
    """The request was refused as a whole."""

    def __init__(self, code, message):
        super().__init__(f"{code}: {message}")
        self.code = code
        self.message = message


def row_count(request):
    """How many rows a request has: the elements that its roottag names."""
    root = ElementTree.fromstring(request)
    tag = root.get("roottag", "")
    return len(root.findall(tag)) if tag else 0


def outcomes_of(request, result):
    """The outcomes that stand in a result, one a row; none after "EMPTY". Raises RefusedRequest for an error result."""
    if not result:
        return []
    root = ElementTree.fromstring(result)
    if root.tag == "error":
        raise RefusedRequest(root.get("code"), root.get("dsc"))

    rows = row_count(request)
    items = [(item.get("key"), int(item.get("code")), item.get("dsc")) for item in root.findall("item")]
    # A setting that is refused while it is written has two outcomes, the refusal and then "ok": the refusal counts.
    # An error that stopped the loop leaves rows without an outcome; then every pair that looks like it is one.
    stopped = bool(items) and items[-1][1] == 999
    seconds = len(items) if stopped else len(items) - rows
    outcomes = []
    refused_key = None
    for key, code, message in items:
        if seconds > 0 and code == 0 and key == refused_key:
            seconds -= 1
            refused_key = None
            continue
        refused_key = key if code == 101 else None
        outcomes.append(Outcome(len(outcomes) + 1, key, code, message))
    if len(outcomes) > rows:
        outcomes = [outcome._replace(row=None) for outcome in outcomes]
    return outcomes


def xml_text(path):
    """The text of an XML file, read by its byte order mark or the encoding that it declares."""
    data = pathlib.Path(path).read_bytes()
    if data.startswith((codecs.BOM_UTF16_LE, codecs.BOM_UTF16_BE)):
        return data.decode("utf-16")
    declaration = re.match(rb"""<\?xml[^>]*encoding=["']([\w.-]+)""", data)
    encoding = declaration[1].decode() if declaration else "utf-8-sig"
    # Windows writes GBK into files that call it GB2312.
    return data.decode("gb18030" if encoding.lower() in ("gb2312", "gbk") else encoding)


def create(prog_id):
    import pythoncom

    return pythoncom.CoCreateInstance(prog_id, None, pythoncom.CLSCTX_SERVER, pythoncom.IID_IDispatch)


def call(instance, name, *arguments):
    """Calls a method by its name, with arguments by value: with type information the login would come back beside the
    result."""
    import pythoncom

    return instance.Invoke(instance.GetIDsOfNames(name), 0, pythoncom.DISPATCH_METHOD, True, *arguments)


def main(arguments):
    if len(arguments) != 3:
        print("kovra_import.py CLASS REQUEST.xml LOGIN.xml", file=sys.stderr)
        return 2
    class_name, request_file, login_file = arguments
    request = xml_text(request_file)
    # Inside the ERP take the login object that it gives you. Elsewhere the reference host's stands in for it.
    login = create("KovraHost.Login")
    call(login, "LoadXML", xml_text(login_file))
    # One instance serves one request.
    result = call(create("Kovra." + class_name), "Transact", request, login)
    try:
        outcomes = outcomes_of(request, result)
    except RefusedRequest as refused:
        print(refused, file=sys.stderr)
        return 3
    for outcome in outcomes:
        row = "" if outcome.row is None else outcome.row
        print(row, outcome.code, outcome.key, outcome.message, sep="\t")
    return 0 if all(outcome.code == 0 for outcome in outcomes) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
