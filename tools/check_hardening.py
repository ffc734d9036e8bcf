#!/usr/bin/python3
"""Checks the security options of built files: check_hardening.py OBJDUMP DLL [PROGRAM...]

Every file must support random 64-bit addresses and non-executable data, must have no section that is
both writable and executable, and must use stack protection. The DLL must need only libraries of Windows,
must search them in the system folder only, and must have a version resource.
"""
import re
import subprocess
import sys

import pefile

LOAD_FROM_SYSTEM_FOLDER = 0x800
LOAD_CONFIG = pefile.DIRECTORY_ENTRY["IMAGE_DIRECTORY_ENTRY_LOAD_CONFIG"]
# Functions with stack protection. Fewer mean that most sources were compiled without the option.
MIN_GUARDED = 100
# Libraries of Windows itself. The DLL needs no others.
WINDOWS = {f"{name}.dll" for name in ("kernel32", "user32", "gdi32", "opengl32", "glu32", "gdiplus",
                                      "shell32", "advapi32", "msvcrt")}
RELOCATIONS = 5  # index in the table of data directories
DEPENDENT_LOAD_FLAGS = 78  # offset in the load configuration, bytes; 2 bytes long


def image_faults(image):
    header = image.OPTIONAL_HEADER
    flags = {
        "DYNAMIC_BASE": "is not loaded at random addresses",
        "HIGH_ENTROPY_VA": "is not loaded at random addresses of 64 bits",
        "NX_COMPAT": "does not ask for non-executable data",
    }
    for flag, fault in flags.items():
        if not getattr(header, "IMAGE_DLLCHARACTERISTICS_" + flag):
            yield fault
    if image.FILE_HEADER.IMAGE_FILE_RELOCS_STRIPPED or not header.DATA_DIRECTORY[RELOCATIONS].Size:
        yield "has no relocations, so it cannot be loaded at random addresses"
    for section in image.sections:
        if section.IMAGE_SCN_MEM_WRITE and section.IMAGE_SCN_MEM_EXECUTE:
            yield f"has a section that is writable and executable: {section.Name.rstrip(bytes(1))}"
    if header.CheckSum != image.generate_checksum():
        yield "has a wrong checksum"


def guarded_functions(objdump, path):
    listing = subprocess.run([objdump, "-d", "--section=.text", path], check=True,
                             capture_output=True, text=True).stdout
    return len(re.findall(r"call.*<__stack_chk_fail>", listing))


def dll_faults(image):
    config = image.OPTIONAL_HEADER.DATA_DIRECTORY[LOAD_CONFIG]
    flags = 0
    if config.Size:
        flags = image.get_word_at_rva(config.VirtualAddress + DEPENDENT_LOAD_FLAGS)
        if image.get_dword_at_rva(config.VirtualAddress) < DEPENDENT_LOAD_FLAGS + 2:
            yield "has a load configuration without flags"
    if flags != LOAD_FROM_SYSTEM_FOLDER:
        yield f"searches other libraries with the flags {flags:#x}"
    others = {entry.dll.decode().lower() for entry in image.DIRECTORY_ENTRY_IMPORT} - WINDOWS
    if others:
        yield f"needs libraries that do not come with Windows: {', '.join(sorted(others))}"
    if not getattr(image, "VS_FIXEDFILEINFO", None):
        yield "has no version"


def main():
    objdump, dll, *programs = sys.argv[1:]
    failed = False
    for path in [dll, *programs]:
        image = pefile.PE(path)
        guarded = guarded_functions(objdump, path)
        faults = list(image_faults(image))
        if guarded < MIN_GUARDED:
            faults.append(f"protects the stack of only {guarded} functions")
        if path == dll:
            faults += dll_faults(image)
        for fault in faults:
            print(f"{path} {fault}")
        failed |= bool(faults)
        print(f"{path}: {guarded} functions protect their stack")
    sys.exit(failed)


if __name__ == "__main__":
    main()
