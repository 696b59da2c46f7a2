' client.vbs CLASS...: a scripting client on a machine with Kovra.dll registered and without the ERP: every class is created by its ProgID
' and answers a caller that has no login; the class that needs the ERP's companion at once is refused on creation.
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

Dim i, name, instance, result
If WScript.Arguments.Count = 0 Then WScript.Quit 2
For i = 0 To WScript.Arguments.Count - 1
  name = WScript.Arguments(i)
  If name = "ClsPriceJustVou" Then
    On Error Resume Next
    Set instance = CreateObject("Kovra." & name)
    Expect name & " needs the ERP's companion", Err.Number, 429
    On Error Goto 0
  Else
    Set instance = CreateObject("Kovra." & name)
    Expect name & " is what its ProgID says", TypeName(instance), "_" & name
    ' 91: the login is Nothing.
    result = instance.Transact("<request/>", Nothing)
    Expect name & " answers with text", VarType(result), vbString
    Expect name & " reports the missing login", Left(result, 16), "<error code=""91"""
    ' A string is no login either: Transact takes an object.
    On Error Resume Next
    result = instance.Transact("<request/>", "no login")
    Expect name & " survives a login that is no object", (Err.Number <> 0 Or Left(result, 6) = "<error"), True
    Err.Clear
    On Error Goto 0
  End If
  Set instance = Nothing
Next

WScript.Echo "end of script"
WScript.Quit failures
