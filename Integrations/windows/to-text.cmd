@echo off
rem Drop files or folders on this file: each is converted to text, in place.
if "%~1"=="" (
    echo Drop data files or folders on this file to convert them to text.
    pause
    exit /b 2
)
"%~dp0corvid.exe" convert --to txt -i -- %*
if errorlevel 1 pause
