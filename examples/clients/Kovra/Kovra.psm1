# Kovra's classes from PowerShell. Windows PowerShell 5.1 and PowerShell 7, on Windows.

# Every language that has no folder here reads English.
$messages = DATA {
    ConvertFrom-StringData @'
    Import      = Import {0} rows ({1})
    Refused     = The request was refused as a whole ({0}): {1}
    NotCreated  = {0} cannot be created in this {1}-bit process: {2} Run kovra doctor to see what is registered.
    NotXml      = '{0}' is not XML: {1}
    Emptied     = The operation EMPTY is done.
'@
}
Import-LocalizedData -BindingVariable messages -FileName Messages.psd1 -ErrorAction SilentlyContinue

Update-TypeData -TypeName Kovra.Outcome -DefaultDisplayPropertySet @('Row', 'Code', 'Key', 'Message') -Force

# The document of a text; without one, of the file Name, read by its byte order mark or the encoding that it declares.
# Nothing that it names is loaded.
function Read-XmlDocument([string] $Name, [string] $Text) {
    $document = New-Object System.Xml.XmlDocument
    $document.PreserveWhitespace = $true
    $document.XmlResolver = $null
    try { if ($PSBoundParameters.ContainsKey('Text')) { $document.LoadXml($Text) } else { $document.Load($Name) } }
    catch { throw ($messages.NotXml -f $Name, $_.Exception.GetBaseException().Message) }
    $document
}

function New-ComInstance([string] $ProgId) {
    try { New-Object -ComObject $ProgId }
    catch { throw ($messages.NotCreated -f $ProgId, ([IntPtr]::Size * 8), $_.Exception.GetBaseException().Message) }
}

# A call by name with arguments by value: PowerShell's own call would want the login as a reference. BaseObject is the
# object itself, without what PowerShell wraps around it.
function Invoke-ComMethod($Instance, [string] $Name, [object[]] $Arguments) {
    for ($index = 0; $index -lt $Arguments.Count; $index++) {
        $Arguments[$index] = $Arguments[$index].PSObject.BaseObject
    }
    $target = $Instance.PSObject.BaseObject
    $target.GetType().InvokeMember($Name, [Reflection.BindingFlags]::InvokeMethod, $null, $target, $Arguments)
}

# How many rows a request has: the elements that its roottag names.
function Get-RowCount([Xml.XmlElement] $Root) {
    $tag = $Root.GetAttribute('roottag')
    if ($tag -eq '') { 0 } else { $Root.SelectNodes($tag).Count }
}

function ConvertFrom-KovraResult {
    <#
    .SYNOPSIS
    Tells what came of each row of a request.
    说明请求中每一行的结果。

    .DESCRIPTION
    Gives an object for each row of a result document, with the properties Row (counted from 1), Key, Code and Message. The
    code of an accepted row is 0. An error result, by which a request is refused as a whole, is written as an error.

    A setting that is refused while it is written has two outcomes in the document, the refusal and then "ok": the refusal
    counts and is the one that is given. Row is empty where the document has more outcomes than the request has rows, as it
    has for price vouchers that ended in an error.

    对结果文档中的每一行给出一个对象，属性为 Row（从 1 开始的行号）、Key、Code 和 Message；接受的行 Code 为 0。请求整体被拒绝时
    写出一个错误。写入时被拒绝的设置在文档中有两个结果，先是拒绝，然后是“ok”：以拒绝为准，只给出这一个。结果多于行数时（例如
    出错的调价单），Row 为空。

    .PARAMETER Result
    The text that Transact returned. Transact 返回的文本。

    .PARAMETER Request
    The text of the request. 请求的文本。

    .EXAMPLE
    ConvertFrom-KovraResult -Result $result -Request $request
    #>
    [CmdletBinding()]
    [OutputType('Kovra.Outcome')]
    param(
        [Parameter(Mandatory, ValueFromPipeline)] [AllowEmptyString()] [string] $Result,
        [Parameter(Mandatory)] [string] $Request
    )
    process {
        if ($Result -eq '') {
            Write-Verbose $messages.Emptied
            return
        }
        $root = (Read-XmlDocument 'Result' $Result).DocumentElement
        if ($root.LocalName -eq 'error') {
            $code = $root.GetAttribute('code')
            Write-Error -Message ($messages.Refused -f $code, $root.GetAttribute('dsc')) -ErrorId "Kovra.$code" `
                -Category InvalidData -TargetObject $Request
            return
        }
        $rows = Get-RowCount (Read-XmlDocument 'Request' $Request).DocumentElement
        $items = @($root.SelectNodes('item'))
        # An error that stopped the loop leaves rows without an outcome; then every pair that looks like it is a row's two.
        $stopped = $items.Count -gt 0 -and $items[-1].GetAttribute('code') -eq '999'
        $seconds = if ($stopped) { $items.Count } else { $items.Count - $rows }

        $outcomes = New-Object System.Collections.ArrayList
        $refusedKey = $null
        foreach ($item in $items) {
            $key = $item.GetAttribute('key')
            $code = [int] $item.GetAttribute('code')
            if ($seconds -gt 0 -and $code -eq 0 -and $refusedKey -ceq $key) {
                $seconds--
                $refusedKey = $null
                continue
            }
            $refusedKey = if ($code -eq 101) { $key } else { $null }
            [void] $outcomes.Add([pscustomobject] @{
                PSTypeName = 'Kovra.Outcome'
                Row        = $outcomes.Count + 1
                Key        = $key
                Code       = $code
                Message    = $item.GetAttribute('dsc')
            })
        }
        if ($outcomes.Count -gt $rows) {
            foreach ($outcome in $outcomes) { $outcome.Row = $null }
        }
        $outcomes
    }
}

function Invoke-KovraImport {
    <#
    .SYNOPSIS
    Imports XML requests into inventory accounting.
    把 XML 请求导入存货核算。

    .DESCRIPTION
    Sends each request to the registered class and gives an object for each row, with the properties Row (counted from 1),
    Key, Code and Message: code 0 is an accepted row, every other a refused one. A request that is refused as a whole is
    written as an error; the requests behind it are still sent. -WhatIf tells what would be sent, and to which class,
    without creating anything.

    The PowerShell must have the size (32 or 64 bits) of the Kovra.dll that is registered: the 32-bit one is
    C:\Windows\SysWOW64\WindowsPowerShell\v1.0\powershell.exe.

    把每份请求交给已注册的类，对每一行给出一个对象，属性为 Row（从 1 开始的行号）、Key、Code 和 Message：Code 为 0 表示已接受，
    其他值表示被拒绝。整体被拒绝的请求写出一个错误，其后的请求照常发送。使用 -WhatIf 时只说明将发送什么、交给哪个类，
    不创建任何对象。PowerShell 的位数必须与注册的 Kovra.dll 一致。

    .PARAMETER Class
    The class that imports: ClsInvSubject, ClsOppSubject, ClsOppSubjectST, ClsKovra, ClsKovraProof or ClsPriceJustVou.
    执行导入的类。

    .PARAMETER Path
    The file of a request. 请求文件。

    .PARAMETER Request
    The text of a request, instead of a file. 请求的文本，代替文件。

    .PARAMETER Login
    The ERP's login object; or the path of a login file, for KovraHost.dll on a machine without the ERP.
    ERP 的登录对象；在没有 ERP 的机器上为登录文件的路径（由 KovraHost.dll 读取）。

    .EXAMPLE
    Invoke-KovraImport ClsInvSubject settings.xml -Login $login | Where-Object Code -ne 0

    Imports inventory account settings and shows the refused rows. 导入存货科目设置，显示被拒绝的行。

    .EXAMPLE
    Get-ChildItem *.xml | Invoke-KovraImport ClsKovra -Login $login | Export-Csv outcomes.csv -Encoding Unicode

    Imports every request of a folder, and keeps the outcomes as a table. 导入文件夹中的全部请求，把结果存为表格。

    .EXAMPLE
    Invoke-KovraImport ClsKovra opening.xml -Login login.xml -WhatIf

    Tells how many rows would be imported. 说明将导入多少行。
    #>
    [CmdletBinding(SupportsShouldProcess, DefaultParameterSetName = 'Path')]
    [OutputType('Kovra.Outcome')]
    param(
        [Parameter(Mandatory, Position = 0)]
        [ValidateSet('ClsInvSubject', 'ClsOppSubject', 'ClsOppSubjectST', 'ClsKovra', 'ClsKovraProof', 'ClsPriceJustVou')]
        [string] $Class,

        [Parameter(Mandatory, Position = 1, ParameterSetName = 'Path', ValueFromPipelineByPropertyName)]
        [Alias('FullName')]
        [string] $Path,

        [Parameter(Mandatory, ParameterSetName = 'Request', ValueFromPipeline)]
        [string] $Request,

        [Parameter(Mandatory)]
        [object] $Login
    )
    process {
        $name = 'Request'
        if ($PSCmdlet.ParameterSetName -eq 'Path') {
            $name = $PSCmdlet.GetUnresolvedProviderPathFromPSPath($Path)
            $document = Read-XmlDocument $name
        }
        else {
            $document = Read-XmlDocument $name $Request
        }
        $text = $document.OuterXml
        $root = $document.DocumentElement
        $action = $messages.Import -f (Get-RowCount $root), $root.GetAttribute('proc')
        if (-not $PSCmdlet.ShouldProcess("Kovra.$Class <- $name", $action)) { return }

        $importer = $null
        $ownLogin = $null
        try {
            $hostLogin = $Login
            if ($Login -is [string]) {
                $hostLogin = $ownLogin = New-ComInstance 'KovraHost.Login'
                $loginText = (Read-XmlDocument ($PSCmdlet.GetUnresolvedProviderPathFromPSPath($Login))).OuterXml
                [void] (Invoke-ComMethod $ownLogin 'LoadXML' @($loginText))
            }
            # One instance serves one request, and holds its connection until it is given back.
            $importer = New-ComInstance "Kovra.$Class"
            $result = Invoke-ComMethod $importer 'Transact' @($text, $hostLogin)
            ConvertFrom-KovraResult -Result $result -Request $text
        }
        finally {
            foreach ($instance in $importer, $ownLogin) {
                if ($null -ne $instance) {
                    [void] [Runtime.InteropServices.Marshal]::FinalReleaseComObject($instance.PSObject.BaseObject)
                }
            }
        }
    }
}

Export-ModuleMember -Function @('Invoke-KovraImport', 'ConvertFrom-KovraResult')
