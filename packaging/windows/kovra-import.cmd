@echo off
rem Imports a workbook: drop it on this file or on its entry in the Start menu, or start this and name it. Makes the
rem test run, opens its report, and asks before anything is written.
setlocal DisableDelayedExpansion
chcp 65001 >nul
set "kovra=%~dp0kovra.exe"
set "book=%~1"
if defined book goto named
echo 请把要导入的工作簿（.xlsx 或 .csv）拖到此窗口，然后按回车。
echo Drag the workbook (.xlsx or .csv) into this window, then press Enter.
set /p "book=> "
if not defined book goto end
set book=%book:"=%
:named
if exist "%book%" goto there
echo 找不到文件 / No such file: %book%
goto end
:there
for %%f in ("%book%") do set "stem=%%~dpnf"
for %%f in ("%book%") do set "login=%%~dpflogin.xml"
if exist "%login%" goto run
set "login=%APPDATA%\Kovra\login.xml"
if exist "%login%" goto run
echo.
echo 没有登录文件。请把 login.xml 放在工作簿旁边，或放在 %APPDATA%\Kovra 中；
echo 用 kovra login init 生成，说明见 docs\zh\login.md。
echo There is no login file. Put login.xml beside the workbook or into %APPDATA%\Kovra;
echo kovra login init makes one, docs\en\login.md tells more.
goto end
:run
set "report=%stem%.test-run.html"
"%kovra%" import "%book%" --login "%login%" --report "%report%"
if errorlevel 2 goto end
if exist "%report%" start "" "%report%"
echo.
echo 以上是试导入，账套没有改变。报告已打开。正式导入请输入 Y 并按回车；直接按回车则不导入。
echo This was the test run; the account is as it was. The report is open. To import in earnest type Y and press Enter;
echo Enter alone imports nothing.
set "answer="
set /p "answer=> "
if /i "%answer%"=="Y" goto commit
echo 没有导入。 Nothing was imported.
goto end
:commit
"%kovra%" import "%book%" --login "%login%" --commit
:end
echo.
pause
