#!/usr/bin/python3
"""Reads from built files how they protect the process that loads them.

check_hardening.py OBJDUMP DLL [PROGRAM...]: every file must lie at any address of 64 bits, run no
data and hold no page that is written and run; what holds code must guard its stack; the DLL looks
for what it is linked to in the system's folder alone and carries a version.
"""
import re
import subprocess
import sys

import pefile

LOAD_FROM_SYSTEM_FOLDER = 0x800
LOAD_CONFIG = pefile.DIRECTORY_ENTRY["IMAGE_DIRECTORY_ENTRY_LOAD_CONFIG"]
# Functions with buffers; below it, the option was lost for most of the sources.
FEWEST_GUARDED = 100


def image_faults(image):
    header = image.OPTIONAL_HEADER
    flags = {
        "DYNAMIC_BASE": "is not loaded at random addresses",
        "HIGH_ENTROPY_VA": "is not loaded at random addresses of 64 bits",
        "NX_COMPAT": "does not ask for data that cannot run",
    }
    for flag, fault in flags.items():
        if not getattr(header, "IMAGE_DLLCHARACTERISTICS_" + flag):
            yield fault
    if image.FILE_HEADER.IMAGE_FILE_RELOCS_STRIPPED or not header.DATA_DIRECTORY[5].Size:
        yield "has no relocations: any address is an empty promise"
    for section in image.sections:
        if section.IMAGE_SCN_MEM_WRITE and section.IMAGE_SCN_MEM_EXECUTE:
            yield f"has a section that is written and run: {section.Name.rstrip(bytes(1))}"
    if header.CheckSum != image.generate_checksum():
        yield "carries a wrong checksum"


def guarded_functions(objdump, path):
    listing = subprocess.run([objdump, "-d", "--section=.text", path], check=True,
                             capture_output=True, text=True).stdout
    return len(re.findall(r"call.*<__stack_chk_fail>", listing))


def dll_faults(image):
    config = image.OPTIONAL_HEADER.DATA_DIRECTORY[LOAD_CONFIG]
    flags = 0
    if config.Size:
        flags = image.get_word_at_rva(config.VirtualAddress + 78)
        if image.get_dword_at_rva(config.VirtualAddress) < 80:
            yield "has a load configuration without flags"
    if flags != LOAD_FROM_SYSTEM_FOLDER:
        yield f"looks for other libraries by {flags:#x}"
    if not getattr(image, "VS_FIXEDFILEINFO", None):
        yield "carries no version"


def main():
    objdump, dll, *programs = sys.argv[1:]
    failed = False
    for path in [dll, *programs]:
        image = pefile.PE(path)
        guarded = guarded_functions(objdump, path)
        faults = list(image_faults(image))
        if guarded < FEWEST_GUARDED:
            faults.append(f"guards the stack of {guarded} functions only")
        if path == dll:
            faults += dll_faults(image)
        for fault in faults:
            print(f"{path} {fault}")
        failed |= bool(faults)
        print(f"{path}: {guarded} functions guard their stack")
    sys.exit(failed)


if __name__ == "__main__":
    main()
