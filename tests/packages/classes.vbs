' classes.vbs CLASS...: calls each class as it is registered, without a login, and shows the number in its error result.
Option Explicit

Dim i, name, result, expression
Set expression = New RegExp
expression.Pattern = "^<error code=""([0-9]+)"""
For i = 0 To WScript.Arguments.Count - 1
  name = WScript.Arguments(i)
  result = CreateObject("Kovra." & name).Transact("<qxinterface/>", Nothing)
  WScript.Echo name & " " & expression.Execute(result)(0).SubMatches(0)
Next
