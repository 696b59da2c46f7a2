# Imports one request:  powershell -STA -File Import.ps1 -Class ClsInvSubject -Request request.xml -Login login.xml
# Kovra's classes live in a single-threaded apartment: Windows PowerShell starts in one, PowerShell 7 with -STA.
param(
    [Parameter(Mandatory)] [ValidateSet('ClsInvSubject', 'ClsOppSubject', 'ClsOppSubjectST', 'ClsKovra',
                                        'ClsKovraProof', 'ClsPriceJustVou')] [string] $Class,
    [Parameter(Mandatory)] [string] $Request,
    [Parameter(Mandatory)] [string] $Login
)
$ErrorActionPreference = 'Stop'

# Inside the ERP take the login object that it gives you. Elsewhere the reference host's stands in for it.
$hostLogin = New-Object -ComObject KovraHost.Login
[void] $hostLogin.LoadXML([IO.File]::ReadAllText((Resolve-Path $Login)))

# One instance serves one request.
$importer = New-Object -ComObject "Kovra.$Class"
$text = $importer.Transact([IO.File]::ReadAllText((Resolve-Path $Request)), [ref] $hostLogin)

# "EMPTY" answers with the empty text.
if ($text -eq '') { return }
$result = [xml] $text
if ($result.DocumentElement.Name -eq 'error') {
    Write-Error "$($result.error.code): $($result.error.dsc)"
}
# One outcome a row; code 0 is accepted.
$result.DocumentElement.SelectNodes('item') | Select-Object key, code, dsc
