"""The same rows as Python has them: fetchall of dictionaries. python_rows.py DATABASE STATEMENT"""
import sqlite3
import sys
import time

for factory in ("dict", "sqlite3.Row"):
    connection = sqlite3.connect(sys.argv[1])
    connection.row_factory = (
        sqlite3.Row
        if factory == "sqlite3.Row"
        else lambda cursor, row: {column[0]: value for column, value in zip(cursor.description, row)}
    )
    for _ in range(5):
        start = time.perf_counter()
        rows = [dict(row) if factory == "sqlite3.Row" else row for row in connection.execute(sys.argv[2]).fetchall()]
        print(f"Python, fetchall, {factory}: {1000 * (time.perf_counter() - start):.0f} ms, {len(rows)} rows")
        del rows
