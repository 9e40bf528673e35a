# SPDX-License-Identifier: GPL-3.0-or-later
"""Walks `kestrelctl rr-serve` with python3-suds, a SOAP client no one here wrote.

Every operation of the served description is called with the demo data; every record that comes
back must carry exactly the elements its declared type lists. A wrong password must come back as
the AUTH fault and an unknown county as nil. Usage: peer_suds_walk.py KESTRELCTL [RECORD_DIR]
(with RECORD_DIR, each operation's reply is kept there as <operation>.xml)
"""
import logging
import re
import subprocess
import sys

from suds import WebFault
from suds.client import Client
from suds.plugin import MessagePlugin
from suds.sudsobject import Object

logging.disable(logging.CRITICAL)

# Demo data ids, by parameter name.
ARGS = {"sid": 7001, "stid": 101, "ctid": 1001, "aid": 501, "scid": 3001, "coid": 1, "mid": 601,
        "zipcode": 12345, "id": 0, "mode": 0, "tag": 1, "tgCid": 0, "tgTag": 0, "tgDec": 0,
        "lat": 44.52, "lon": -70.11, "range": 2.5, "unit": "mi", "freq": 0, "tone": "",
        "callsign": "KDL123", "code": "0", "sysid": "1A2B", "stids": "101", "ctids": "1001"}


class Recorder(MessagePlugin):
    def __init__(self, folder):
        self.folder, self.op = folder, None

    def received(self, context):
        if self.folder and self.op:
            with open(f"{self.folder}/{self.op}.xml", "wb") as f:
                f.write(context.reply)


def declared(client):
    """Type name -> element names, for every complex type of the description."""
    out = {}
    for (name, _ns), t in client.wsdl.schema.types.items():
        kids = [c.name for c, _ in t.children()]
        if kids:
            out[name] = set(kids)
    return out


def check(value, types, seen, where):
    if isinstance(value, list):
        for item in value:
            check(item, types, seen, where)
    elif isinstance(value, Object):
        kind = value.__class__.__name__
        fields = {"class" if k == "cls" else k for k, _ in value}  # suds's name for "class"
        want = types.get(kind)
        if want is None:
            sys.exit(f"{where}: type {kind} is not declared")
        if fields != want:
            sys.exit(f"{where}: {kind} carries {sorted(fields)}, declared {sorted(want)}")
        seen.add(kind)
        for _, v in value:
            check(v, types, seen, where)


def main():
    server = subprocess.Popen([sys.argv[1], "rr-serve", "--listen", "127.0.0.1:0"],
                              stdout=subprocess.PIPE, text=True)
    try:
        m = re.match(r"Listening on (\S+)", server.stdout.readline())
        if not m:
            sys.exit("rr-serve did not say where it listens")
        recorder = Recorder(sys.argv[2] if len(sys.argv) > 2 else None)
        client = Client(m.group(1) + "?wsdl", cache=None, plugins=[recorder])
        types = declared(client)

        def auth(password="demo"):
            a = client.factory.create("authInfo")
            a.username, a.password, a.appKey, a.version, a.style = (
                "demo", password, "10000001", "latest", "rpc")
            return a

        seen, ops = set(), 0
        for method in client.wsdl.services[0].ports[0].methods.values():
            kwargs = {}
            for part in method.soap.input.body.parts:
                kwargs[part.name] = auth() if part.name == "authInfo" else ARGS[part.name]
            recorder.op = method.name
            try:
                reply = getattr(client.service, method.name)(**kwargs)
            except WebFault as e:
                sys.exit(f"{method.name}: {e}")
            check(reply, types, seen, method.name)
            ops += 1
        recorder.op = None

        try:
            client.service.getUserData(authInfo=auth("wrong"))
            sys.exit("a wrong password was accepted")
        except WebFault as e:
            if e.fault.faultcode != "AUTH":
                sys.exit(f"wrong password: fault {e.fault.faultcode}")
        if client.service.getCountyInfo(ctid=5, authInfo=auth()) is not None:
            sys.exit("an unknown county is not nil")
        print(f"{ops} operations, {len(seen)} record types read")
    finally:
        server.terminate()
        server.wait()


if __name__ == "__main__":
    main()
