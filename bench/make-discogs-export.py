#!/usr/bin/env python3
"""Writes a collection export of the public music database with N rows (default 100,000), in the
site's exact header and quoting: several labels and catalogue numbers, numbered names, ratings,
conditions, notes with commas and line breaks, 8 folders and one custom column.
Usage: bench/make-discogs-export.py [N] > export.csv"""
import csv
import random
import sys

n = int(sys.argv[1]) if len(sys.argv) > 1 else 100000
rnd = random.Random(20)
out = csv.writer(sys.stdout, lineterminator="\n")
out.writerow(["Catalog#", "Artist", "Title", "Label", "Format", "Rating", "Released", "release_id",
              "CollectionFolder", "Date Added", "Collection Media Condition", "Collection Sleeve Condition",
              "Collection Notes", "Collection Shelf"])
conditions = ["Mint (M)", "Near Mint (NM or M-)", "Very Good Plus (VG+)", "Very Good (VG)", ""]
for i in range(n):
    labels = f"Label {i % 900} ({i % 7 + 2})" + (f", Label {i % 40}" if i % 3 == 0 else "")
    catnos = f"CAT {i:06d}" + (f", CAT-{i:06d} X" if i % 3 == 0 else "")
    notes = f"Copy {i}, bought used\nsecond line" if i % 10 == 0 else ""
    out.writerow([catnos, f"Artist {i % 5000} ({i % 9 + 2})", f"Album {i}", labels,
                  rnd.choice(["CD, Album", "Vinyl, LP, Album", "CD, Comp, RE"]), rnd.choice(["", "1", "3", "5"]),
                  str(1960 + i % 60), 1000000 + i, f"Folder {i % 8}",
                  f"20{10 + i % 15}-0{1 + i % 9}-1{i % 9} 0{i % 10}:1{i % 6}:2{i % 10}",
                  rnd.choice(conditions), rnd.choice(conditions), notes, f"Shelf {i % 30}"])
