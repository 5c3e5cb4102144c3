@echo off
rem Drop files or folders on this file: each is converted to binary, in place.
if "%~1"=="" (
    echo Drop data files or folders on this file to convert them to binary.
    pause
    exit /b 2
)
"%~dp0corvid.exe" convert --to bin -i -- %*
if errorlevel 1 pause
