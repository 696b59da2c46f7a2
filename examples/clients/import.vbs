' Imports one request:  cscript //nologo import.vbs CLASS REQUEST LOGIN [RESULT]
'   CLASS    ClsInvSubject, ClsOppSubject, ClsOppSubjectST, ClsKovra, ClsKovraProof or ClsPriceJustVou
'   REQUEST  the request's XML, LOGIN the login's, both saved as Unicode (UTF-16 with its byte order mark)
'   RESULT   where to write the result document, likewise in UTF-16; without it, it is shown
' Ends with 1 when the request as a whole was refused.
Option Explicit

Const ForReading = 1
Const Unicode = -1

Dim files, importer, login, result, target
Set files = CreateObject("Scripting.FileSystemObject")

Function TextOf(path)
  Dim file
  Set file = files.OpenTextFile(path, ForReading, False, Unicode)
  TextOf = file.ReadAll
  file.Close
End Function

If WScript.Arguments.Count < 3 Then
  WScript.Echo "import.vbs CLASS REQUEST LOGIN [RESULT]"
  WScript.Quit 2
End If

' Inside the ERP take the login object that it gives you. Elsewhere the reference host's stands in for it.
Set login = CreateObject("KovraHost.Login")
login.LoadXML TextOf(WScript.Arguments(2))

' One instance serves one request.
Set importer = CreateObject("Kovra." & WScript.Arguments(0))
result = importer.Transact(TextOf(WScript.Arguments(1)), login)

If WScript.Arguments.Count > 3 Then
  Set target = files.CreateTextFile(WScript.Arguments(3), True, True)
  target.Write result
  target.Close
Else
  WScript.Echo result
End If
If Left(result, 6) = "<error" Then WScript.Quit 1
