' Calls each class as it is registered, without a login, and shows the number in its error result.
Option Explicit

Dim name, result, expression
Set expression = New RegExp
expression.Pattern = "^<error code=""([0-9]+)"""
For Each name In Array("ClsInvSubject", "ClsOppSubject", "ClsOppSubjectST", "ClsKovra", "ClsKovraProof", "ClsPriceJustVou")
  result = CreateObject("Kovra." & name).Transact("<qxinterface/>", Nothing)
  WScript.Echo name & " " & expression.Execute(result)(0).SubMatches(0)
Next
