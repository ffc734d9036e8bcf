@echo off
rem Tries the map library on this machine and writes report.txt and pictures beside this file.
rem Installs nothing. Usage: check.cmd [short]
rem   short  of each program only the first test, one part of the tour, one benchmark; asks nothing
setlocal
cd /d "%~dp0"
set form=%~1
del report.txt failed.txt 2>nul
if exist output rmdir /s /q output
mkdir output pictures 2>nul
set runs=0

echo The check opens windows and moves the pointer: please leave mouse and keyboard alone.
echo If a program hangs, the last line of report.txt names it: end it in the Task Manager, and the
echo check goes on.

rem The tests write into the library's folders, so the files of an installed host are moved aside.
set data="%ProgramData%\Zelmo"
set settings="%APPDATA%\Zelmo"
call :move_aside %data%
if errorlevel 1 goto :stopped
call :move_aside %settings%
if errorlevel 1 goto :half_stopped

call :say "== This machine"
>>report.txt ver
call :say "processor: %PROCESSOR_IDENTIFIER%, %NUMBER_OF_PROCESSORS% cores"
rem Wine: the first program with a window starts a process that keeps the output of this program open.
bench\renderer.exe >nul 2>nul
call :measure renderer

call :say "== Tests"
for %%p in (tests\*_tests.exe) do call :test_program %%p

call :say "== Tour"
if "%form%"=="" for %%t in (globe pointer clock) do call :tour %%t 1280 800
call :tour sizes 800 600

call :say "== Benchmarks"
mkdir "%ProgramData%\Zelmo\Horivo" 2>nul
copy assets\map.jpg "%ProgramData%\Zelmo\Horivo" >nul
call :measure first_picture 1280 800
if not "%form%"=="" goto :measured
call :measure bare_map assets\map.jpg 1280 800
call :measure compile_bench
call :measure frame_bench
call :measure resize_bench
call :measure image_bench pairs assets\map.jpg 2048 1024
:measured

call :put_back %data%
call :put_back %settings%
rmdir /s /q output >nul 2>nul
if not exist failed.txt goto :passed
call :say "== FAILED"
type failed.txt
>>report.txt type failed.txt
if "%form%"=="" pause
exit /b 1
:passed
call :say "== Everything passed"
if "%form%"=="" pause
exit /b 0
:half_stopped
call :put_back %data%
:stopped
if "%form%"=="" pause
exit /b 2

:move_aside
if not exist %1 exit /b 0
if exist "%~1 before check" goto :not_moved
move %1 "%~1 before check" >nul
if not exist %1 exit /b 0
:not_moved
echo Cannot move %1 to "%~1 before check", so nothing was tried. If an
echo earlier check was interrupted, rename that folder back or delete it.
exit /b 1

:put_back
if exist %1 rmdir /s /q %1
if exist "%~1 before check" move "%~1 before check" %1 >nul
exit /b 0

:say
echo %~1
>>report.txt echo %~1
exit /b 0

rem Runs a program: run NAME PROGRAM ARGUMENTS. Its output goes to a file of its own, because a child of
rem the program may keep the file open. A failure goes to both reports.
:run
set /a runs+=1
set name=%~1
set command=
:next_word
shift
if not "%~1"=="" set command=%command% %1
if not "%~1"=="" goto :next_word
>>report.txt echo %name%
%command% >output\%runs%.txt 2>&1
set code=%errorlevel%
if %code%==0 exit /b 0
call :say "FAILED %name%, exit code %code%"
>>failed.txt echo %name%
>>report.txt type output\%runs%.txt
exit /b 1

rem Runs each test of a program in a process of its own: the library's state exists once a process.
:test_program
echo %~n1
set suite=
set enough=
for /f "tokens=1" %%t in ('%1 --gtest_list_tests') do call :listed %1 %%t
exit /b 0

rem A line of the list: a suite ends with a dot, its tests follow. The first line is neither.
:listed
set word=%2
if "%word:~-1%"=="." set suite=%word%
if "%word:~-1%"=="." exit /b 0
if "%suite%%enough%"=="" exit /b 0
if not "%enough%"=="" exit /b 0
call :run %suite%%word% %1 --gtest_brief "--gtest_filter=%suite%%word%"
if not "%form%"=="" set enough=yes
exit /b 0

:tour
call :run "tour: %1" tour\horivo_tour.exe %1 pictures %2 %3
exit /b 0

:measure
call :run %1 bench\%1.exe %2 %3 %4 %5
if not errorlevel 1 >>report.txt type output\%runs%.txt
exit /b 0
