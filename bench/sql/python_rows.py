"""The same rows as Python has them: a list of dictionaries. python_rows.py DATABASE STATEMENT ROUNDS"""
import sqlite3
import sys

connection = sqlite3.connect(sys.argv[1])
connection.row_factory = lambda cursor, row: {column[0]: value for column, value in zip(cursor.description, row)}
for _ in range(int(sys.argv[3])):
    rows = connection.execute(sys.argv[2]).fetchall()
    del rows
