"""The Python client over the folders of results, and its calls of COM on objects that stand in for it."""

import io
import pathlib
import sys
import tempfile
import types
import unittest
from contextlib import redirect_stderr, redirect_stdout
from unittest import mock

import kovra_import

LOGIN = '<?xml version="1.0" encoding="gb2312"?><login cUserName="王赟"/>'
RESULTS = pathlib.Path(__file__).parent / "results"


def told(request, result):
    try:
        outcomes = kovra_import.outcomes_of(request, result)
    except kovra_import.RefusedRequest as refused:
        return f"{refused}\n"
    return "".join(
        f"{'' if outcome.row is None else outcome.row}\t{outcome.code}\t{outcome.key}\t{outcome.message}\n"
        for outcome in outcomes
    )


class Outcomes(unittest.TestCase):
    def test_are_those_of_every_folder(self):
        folders = sorted(RESULTS.iterdir())
        self.assertTrue(folders)
        for folder in folders:
            with self.subTest(folder.name):
                request, result, outcomes = (
                    (folder / name).read_bytes().decode() for name in ("request.xml", "result.xml", "outcomes.txt")
                )
                self.assertEqual(told(request, result), outcomes)


class Instance:
    """An automation object that answers every call with the same."""

    def __init__(self, prog_id, asked, answer):
        self.prog_id = prog_id
        self.asked = asked
        self.answer = answer

    def GetIDsOfNames(self, name):
        return name

    def Invoke(self, name, locale, kind, wants_result, *arguments):
        assert (locale, kind, wants_result) == (0, "method", True)
        self.asked.append((self.prog_id, name, *arguments))
        return self.answer


class Com:
    """What pywin32 gives: objects by their ProgIDs, and what was asked of them."""

    def __init__(self, answer):
        self.asked = []
        self.created = {}
        self.module = types.ModuleType("pythoncom")
        self.module.CLSCTX_SERVER, self.module.IID_IDispatch, self.module.DISPATCH_METHOD = "server", "dispatch", "method"

        def create(prog_id, outer, context, interface):
            assert (outer, context, interface) == (None, "server", "dispatch")
            self.created[prog_id] = Instance(prog_id, self.asked, answer)
            return self.created[prog_id]

        self.module.CoCreateInstance = create


class Client(unittest.TestCase):
    def run_client(self, folder):
        com = Com((RESULTS / folder / "result.xml").read_bytes().decode())
        output, error = io.StringIO(), io.StringIO()
        with tempfile.TemporaryDirectory() as made:
            login = pathlib.Path(made) / "login.xml"
            login.write_bytes(LOGIN.encode("gb18030"))
            with mock.patch.dict(sys.modules, {"pythoncom": com.module}), redirect_stdout(output), redirect_stderr(error):
                status = kovra_import.main(["ClsInvSubject", str(RESULTS / folder / "request.xml"), str(login)])
        return com, status, output.getvalue(), error.getvalue()

    def test_sends_request_and_login_to_the_class(self):
        com, status, output, _ = self.run_client("accepted-and-refused")
        self.assertEqual(status, 1)
        request = (RESULTS / "accepted-and-refused" / "request.xml").read_bytes().decode()
        self.assertEqual(
            com.asked,
            [
                ("KovraHost.Login", "LoadXML", LOGIN),
                ("Kovra.ClsInvSubject", "Transact", request, com.created["KovraHost.Login"]),
            ],
        )
        self.assertEqual(output, (RESULTS / "accepted-and-refused" / "outcomes.txt").read_bytes().decode())

    def test_tells_of_a_request_that_was_refused(self):
        _, status, output, error = self.run_client("refused-as-a-whole")
        self.assertEqual((status, output, error), (3, "", "102: 12月份已结账\n"))

    def test_reads_files_by_mark_or_declaration(self):
        with tempfile.TemporaryDirectory() as made:
            file = pathlib.Path(made) / "请求.xml"
            for data in (
                "<a>仓</a>".encode(),
                "<a>仓</a>".encode("utf-8-sig"),
                "<a>仓</a>".encode("utf-16"),
            ):
                file.write_bytes(data)
                self.assertEqual(kovra_import.xml_text(file), "<a>仓</a>")

    def test_tells_how_it_is_called(self):
        error = io.StringIO()
        with redirect_stderr(error):
            self.assertEqual(kovra_import.main([]), 2)
        self.assertIn("CLASS REQUEST.xml LOGIN.xml", error.getvalue())


if __name__ == "__main__":
    unittest.main()
