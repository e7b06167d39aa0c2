# SPDX-License-Identifier: MIT
"""Looks whether troubleshooting explains each message that the module reports.

usage: messages.py ROOT
"""

import glob
import re
import sys

CALL = re.compile(r'zend_error\(\s*E_(?:WARNING|USER_NOTICE),\s*"((?:[^"\\]|\\.)*)"')


def main(root):
    with open(f"{root}/docs/troubleshooting.md", encoding="utf-8") as page:
        known = page.read()
    messages = set()
    for name in glob.glob(f"{root}/rmon/**/*.cpp", recursive=True):
        with open(name, encoding="utf-8") as source:
            messages.update(CALL.findall(source.read()))
    # What is filled in stands as "..." there: the longest part between is looked for.
    parts = {message: max(re.split(r"%\w|\\n", message), key=len).strip() for message in messages}
    missing = sorted(message for message, part in parts.items() if part not in known)
    for message in missing:
        print(f"docs/troubleshooting.md says nothing of: {message}")
    if len(messages) < 15:
        print("hardly any message was found")
    return 1 if missing or len(messages) < 15 else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
