' A scripting client of KovraHost.dll on a machine without ADO: it fills the login, and calls the components that need
' no database.
Option Explicit

Dim failures
failures = 0

Sub Expect(what, actual, expected)
  If actual <> expected Then
    WScript.Echo "FAILED " & what & ": " & actual & " instead of " & expected
    failures = failures + 1
  Else
    WScript.Echo "ok " & what
  End If
End Sub

Dim login, text
Set login = CreateObject("KovraHost.Login")
login.LoadXML "<login cAcc_Id=""001"" cIYear=""2024"" cUserId=""demo"" cUserPassWord=""pw"" iMonth=""3""/>"
Expect "a member is read by its name", login.cAcc_Id, "001"
Expect "the year is cIYear", login.LoginYear, "2024"
Expect "the month is a number", login.AccountingMonth, 3
Expect "a login with its own values is taken", _
  login.SubsystemLogin("IA", "001", "2024", "demo", "pw", "2024-01-15", "localhost", "S1"), True
Expect "another password is not", _
  login.SubsystemLogin("IA", "001", "2024", "demo", "guess", "2024-01-15", "localhost", "S1"), False

On Error Resume Next
text = login.QxDbName
Expect "a member without attribute raises 438", Err.Number, 438
Err.Clear
login.LoadXML "<user/>"
Expect "what is no login is refused", Err.Description, "the login's root element is <user>, not <login>"
Err.Clear
On Error Goto 0
Expect "and changes nothing", login.LoginYear, "2024"

' Wine's scripts cannot create MSXML documents; the other tests hand documents in.
Dim helper, docid, detail
Set helper = CreateObject("KovraHost.EaiHelper")
docid = "D"
Expect "MakeResultDoc", helper.MakeResultDoc(docid, "ADD"), "<qxinterface docid=""D"" proc=""ADD""/>"
Expect "GetAttr of Nothing", helper.GetAttr(Nothing, "docid"), ""
Expect "GetChildText of Nothing", helper.GetChildText(Nothing, "other"), ""
detail = ""
Expect "MakeErrorResult", helper.MakeErrorResult("101", "no", detail), "<error code=""101"" dsc=""no""/>"

Dim service, message
Set service = CreateObject("KovraHost.IaVoucherService")
Expect "the context carries the login", service.Context(login).Login.LoginYear, "2024"
login.LoadXML "<login QxDbName=""Provider=None""/>"
message = ""
Expect "without ADO the account cannot be opened", service.VoucherInit(login, message), False
Expect "and the message says why", Len(message) > 0, True

WScript.Echo "end of script"
WScript.Quit failures
