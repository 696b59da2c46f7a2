Attribute VB_Name = "Import"
' Visual Basic 6 and VBA (Excel, Access), in the size (32 or 64 bits) of the Kovra.dll that is registered. Everything is
' created by name: no reference is to be set.
Option Explicit

' Imports a request by the class Kovra.className. hostLogin is the ERP's login object.
' Returns a table with a line for each row and the columns row (counted from 1, empty where the result does not tell), key,
' code (0 for an accepted row) and message, as the cells of a sheet take it; Empty after "EMPTY".
' Raises an error with code and message when the request is refused as a whole.
Public Function KovraImport(ByVal className As String, ByVal request As String, ByVal hostLogin As Object) As Variant
    Dim importer As Object
    ' One instance serves one request.
    Set importer = CreateObject("Kovra." & className)
    KovraImport = KovraOutcomes(request, importer.Transact(request, hostLogin))
End Function

' The outcomes that stand in a result, as KovraImport returns them.
Public Function KovraOutcomes(ByVal request As String, ByVal result As String) As Variant
    Dim root As Object, items As Object, item As Object
    Dim rows As Long, seconds As Long, count As Long, index As Long, code As Long
    Dim refusedKey As Variant, given As Variant, table As Variant
    If result = "" Then Exit Function
    Set root = XmlRoot(result)
    If root.nodeName = "error" Then
        Err.Raise vbObjectError + 513, "Kovra", root.getAttribute("code") & ": " & root.getAttribute("dsc")
    End If

    rows = RowCount(XmlRoot(request))
    Set items = root.selectNodes("item")
    If items.length = 0 Then Exit Function
    ' A setting that is refused while it is written has two outcomes, the refusal and then "ok": the refusal counts. An
    ' error that stopped the loop leaves rows without an outcome; then every pair that looks like it is one.
    seconds = items.length - rows
    If items.item(items.length - 1).getAttribute("code") = "999" Then seconds = items.length
    ReDim given(items.length - 1)
    refusedKey = Null
    For index = 0 To items.length - 1
        Set item = items.item(index)
        code = CLng(item.getAttribute("code"))
        If seconds > 0 And code = 0 And SameKey(refusedKey, item.getAttribute("key")) Then
            seconds = seconds - 1
            refusedKey = Null
        Else
            refusedKey = Null
            If code = 101 Then refusedKey = item.getAttribute("key")
            Set given(count) = item
            count = count + 1
        End If
    Next

    ReDim table(count - 1, 3)
    For index = 0 To count - 1
        If count <= rows Then table(index, 0) = index + 1
        table(index, 1) = given(index).getAttribute("key")
        table(index, 2) = CLng(given(index).getAttribute("code"))
        table(index, 3) = given(index).getAttribute("dsc")
    Next
    KovraOutcomes = table
End Function

Private Function XmlRoot(ByVal text As String) As Object
    Dim document As Object
    Set document = CreateObject("Msxml2.DOMDocument")
    If Not document.loadXML(text) Then Err.Raise vbObjectError + 514, "Kovra", document.parseError.reason
    Set XmlRoot = document.documentElement
End Function

' How many rows a request has: the elements that its roottag names.
Private Function RowCount(ByVal request As Object) As Long
    Dim tag As String
    tag = request.getAttribute("roottag") & ""
    If tag <> "" Then RowCount = request.selectNodes(tag).length
End Function

Private Function SameKey(ByVal refusedKey As Variant, ByVal key As String) As Boolean
    If Not IsNull(refusedKey) Then SameKey = (StrComp(refusedKey, key, vbBinaryCompare) = 0)
End Function
