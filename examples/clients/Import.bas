Attribute VB_Name = "Import"
' Visual Basic 6 and VBA, early bound: set references to "Kovra" and to "Microsoft XML, v3.0".
Option Explicit

' Imports inventory account settings and returns the number of refused rows.
' hostLogin is the ERP's login object.
Public Function ImportSettings(ByVal request As String, ByVal hostLogin As Object) As Long
    ' One instance serves one request.
    Dim importer As New Kovra.ClsInvSubject
    Dim result As New MSXML2.DOMDocument
    result.loadXML importer.Transact(request, hostLogin)

    ' "EMPTY" answers with the empty text.
    If result.documentElement Is Nothing Then Exit Function
    If result.documentElement.nodeName = "error" Then
        Err.Raise vbObjectError + 1, "Kovra", result.documentElement.getAttribute("dsc")
    End If
    Dim item As MSXML2.IXMLDOMElement
    For Each item In result.documentElement.selectNodes("item")
        If item.getAttribute("code") <> "0" Then
            ImportSettings = ImportSettings + 1
            Debug.Print item.getAttribute("key") & ": " & item.getAttribute("dsc")
        End If
    Next
End Function
