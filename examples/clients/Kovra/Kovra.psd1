# Imports into inventory accounting from PowerShell: Import-Module .\Kovra
@{
    RootModule           = 'Kovra.psm1'
    ModuleVersion        = '0.2.0'
    GUID                 = '7a3a1c55-6a0e-4b7e-9d5c-2f0c8f1b6e21'
    Author               = 'Kovra'
    CompanyName          = 'Kovra'
    Copyright            = 'Kovra'
    Description          = 'Imports XML requests into inventory accounting by the classes of Kovra.dll. 通过 Kovra.dll 的类导入存货核算数据。'
    PowerShellVersion    = '5.1'
    CompatiblePSEditions = @('Desktop', 'Core')
    FunctionsToExport    = @('Invoke-KovraImport', 'ConvertFrom-KovraResult')
    CmdletsToExport      = @()
    VariablesToExport    = @()
    AliasesToExport      = @()
}
