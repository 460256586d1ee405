#!/usr/bin/env python3
"""Opens and writes vault files with none of our code: vault.py open|seal FILE PASSPHRASE, the payload as JSON.

"open" prints the payload of the file with its data as digest; "seal" reads {"relativePath", "modified", "text"} on
standard input and writes the vault file.
"""

import base64
import hashlib
import json
import os
import sys

from cryptography.hazmat.primitives.ciphers.aead import AESGCM

action, file, passphrase = sys.argv[1:]
cipher = AESGCM(hashlib.sha256(passphrase.encode()).digest())
if action == "open":
    content = open(file, "rb").read()
    payload = json.loads(cipher.decrypt(content[:12], content[12:], None))
    payload["data"] = hashlib.sha256(base64.b64decode(payload["data"], validate=True)).hexdigest()
    json.dump(payload, sys.stdout, sort_keys=True)
else:
    wanted = json.load(sys.stdin)
    data = base64.b64encode(wanted.pop("text").encode()).decode()
    payload = json.dumps({"data": data, **wanted}, indent=1).replace("/", "\\/").encode()
    nonce = os.urandom(12)
    open(file, "wb").write(nonce + cipher.encrypt(nonce, payload, None))
