#!/usr/bin/env python3
"""check-pdf.py MANUAL PICTURES RELEASE: whether a reader gets all of the manual: pages with text that can be selected,
bookmarks, an index, and so many pictures, none of them cut off. Status 1 with a line for each fault."""
import re
import subprocess
import sys
import xml.etree.ElementTree

manual, pictures, release = sys.argv[1], int(sys.argv[2]), sys.argv[3]
faults = []


def wanted(true, fault):
    if not true:
        faults.append(fault)


document = subprocess.run(["pdftohtml", "-xml", "-stdout", "-zoom", "1", manual], capture_output=True, check=True).stdout
# Control signs of the telegraph code are no XML; what they stand for does not matter here.
root = xml.etree.ElementTree.fromstring(re.sub(rb"[\x00-\x08\x0b\x0c\x0e-\x1f]", b"", document))
pages = root.findall("page")
text = subprocess.run(["pdftotext", "-layout", manual, "-"], capture_output=True, text=True, check=True).stdout
places = []
for page in pages:
    width, height = int(page.get("width")), int(page.get("height"))
    for image in page.iter("image"):
        left, top, w, h = (int(image.get(name)) for name in ("left", "top", "width", "height"))
        places.append((page.get("number"), image.get("src")))
        wanted(left >= 0 and top >= 0 and left + w <= width and top + h <= height,
               f"page {page.get('number')}: a picture is cut off")
bookmarks = [item.text or "".join(item.itertext()) for item in root.iter("item")]

wanted(len(places) >= pictures, f"{len(places)} pictures on the pages, {pictures} wanted")
for word in ["Содержание", "Рисунок", "Таблица", "телеграмм", release]:
    wanted(word in text, f"no text {word!r}")
wanted(len(bookmarks) > 10, f"only {len(bookmarks)} bookmarks")
wanted(any("Указатель" in bookmark for bookmark in bookmarks), "no bookmark of the index")
index = next((page for page in text.split("\f")[3:] if page.strip().startswith("Указатель")), "")
wanted(len(re.findall(r", \d+", index)) > 10, "the index is empty")
for fault in faults:
    print(f"manual: {fault}", file=sys.stderr)
sys.exit(bool(faults))
