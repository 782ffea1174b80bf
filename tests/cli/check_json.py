#!/usr/bin/env python3
"""Checks JSON read from stdin against tests/cli/output.schema.json and,
optionally, one Python expression over it (`doc` is the document), e.g.
    check_json.py 'len(doc["categories"]) > 3'
Exits 0 when both hold, 1 otherwise, printing why."""
import json
import os
import sys

import jsonschema

here = os.path.dirname(os.path.abspath(__file__))
with open(os.path.join(here, "output.schema.json"), encoding="utf-8") as f:
    schema = json.load(f)
try:
    doc = json.load(sys.stdin)
    jsonschema.validate(doc, schema)
except (ValueError, jsonschema.ValidationError) as e:
    print(f"not valid output: {e}".splitlines()[0])
    sys.exit(1)
if len(sys.argv) > 1 and not eval(sys.argv[1], {"doc": doc}):
    print(f"does not hold: {sys.argv[1]}")
    sys.exit(1)
