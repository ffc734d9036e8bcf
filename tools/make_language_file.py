#!/usr/bin/python3
"""Makes the language file that Windows reads from its UTF-8 source.

make_language_file.py SOURCE RESULT

Windows reads profile files in UTF-16 with a byte-order mark or in the machine's ANSI code page, but
not in UTF-8. Lines end in CR LF.
"""

import sys


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    source, result = sys.argv[1:]
    with open(source, encoding="utf-8") as file:
        text = file.read()
    # newline="" keeps the line ends as they are written here; "utf-16-le" writes no mark by itself.
    with open(result, "w", encoding="utf-16-le", newline="") as file:
        file.write("\ufeff" + text.replace("\n", "\r\n"))


if __name__ == "__main__":
    main()
