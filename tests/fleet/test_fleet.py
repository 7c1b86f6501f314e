#!/usr/bin/python3
"""The metrics, the alerts and the dashboard with the programs that read them. Run by check-fleet."""
import json
import re
import shutil
import socket
import subprocess
import time
import unittest
import urllib.error
import urllib.parse
import urllib.request

import program

RULES = program.BUILD / "integration/orfc.rules.yml"
SOURCES = program.ROOT / "integration/prometheus"
PORT = "FC_21:00:00:00:00:00:00:01"


def run(*command, **more):
    return subprocess.run(command, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=120, check=False,
                          **more)


def host(name, **port):
    port = {"WWPN": PORT[3:], "PortSpeed": 22, "Kernel": {"KernelName": "host1", "State": "Online"},
            "Counters": {"invalid_crc_count": 0, "fcp_input_megabytes": 1, "fpin_cn": 0},
            "Transceiver": str(program.ROOT / "simulator/lab/sfp28-shortwave.hex"), **port}
    return program.host_file(name, {"Adapters": [{"Model": "M", "SerialNumber": "S", "PhyPorts": [{"Protocols": [port]}]}]})


class Alerts(unittest.TestCase):
    """In minutes: what a rule finds stands from the 3rd to the 12th, and is gone in the 13th."""

    def alert(self, name, minutes, labels, annotations):
        """Tests at a minute each, with whether the alert fires then."""
        fires = [{"exp_labels": labels, "exp_annotations": annotations}]
        return [{"eval_time": f"{minute}m", "alertname": name, "exp_alerts": fires if is_firing else []}
                for minute, is_firing in minutes.items()]

    def test_all(self):
        tests = []
        names = set()
        for rule in json.loads(program.run("describe").stdout)["rules"]:
            name = "Orfc" + rule["name"].title().replace("-", "")
            names.add(name)
            labels = {"instance": "i", "port": "FC_1", "rule": rule["name"], "severity": rule["severity"]}
            if rule["compares_readings"]:  # holds for a quarter of an hour
                minutes = {2: False, 3: True, 27: True, 28: False}
            elif rule["severity"] == "critical":
                minutes = {3: False, 4: True, 12: True, 13: False}
            else:
                minutes = {7: False, 8: True, 12: True, 13: False}
            series = f'orfc_health_findings{{{",".join(f"{key}={json.dumps(value)}" for key, value in labels.items())}}}'
            tests.append({"interval": "1m", "input_series": [{"series": series, "values": "_x3 2x9 stale"}],
                          "alert_rule_test": self.alert(name, minutes, labels, {
                              "summary": f'i FC_1: {rule["text"]} (2)',
                              "description": f'{rule["meaning"]} {rule["remedy"]}'})})
        tests.append({"interval": "1m", "input_series": [
            {"series": 'orfc_scrape_success{instance="i",what="counters"}', "values": "1x2 0x9 1x9"}],
            "alert_rule_test": self.alert(
                "OrfcScrapeFailed", {7: False, 8: True, 12: True, 13: False},
                {"instance": "i", "what": "counters", "severity": "warning"},
                {"summary": "i: the counters of Fibre Channel ports can't be read completely",
                 "description": "The journal of orfc-exporter@counters.service tells what."})})
        for what, minutes in (("counters", {3: False, 4: True, 60: True, 61: False}),
                              ("transceivers", {45: False, 46: True, 60: True, 61: False})):
            tests.append({"interval": "1m", "input_series": [  # read at 0, and again an hour later
                {"series": f'orfc_last_run_timestamp_seconds{{instance="i",what="{what}"}}', "values": "0x60 3660x9"}],
                "alert_rule_test": self.alert(
                    f"OrfcLate{what.title()}", minutes, {"instance": "i", "what": what, "severity": "warning"},
                    {"summary": f"i: the {what} of Fibre Channel ports are old",
                     "description": f"Look at orfc-exporter-{what}.timer and the journal of orfc-exporter@{what}.service."})})
        file = program.path_of("tests.yml")
        file.write_text(json.dumps({"rule_files": [str(RULES)], "evaluation_interval": "1m", "tests": tests}))
        tested = run("promtool", "test", "rules", str(file))
        self.assertEqual(tested.returncode, 0, tested.stdout[-5000:])
        # Each alert has a test.
        self.assertEqual(set(re.findall(r"- alert: (\w+)", RULES.read_text())),
                         names | {"OrfcScrapeFailed", "OrfcLateCounters", "OrfcLateTransceivers"})

    def test_metrics_are_clean(self):
        for words in ([], ["--part", "counters"], ["--part", "transceivers"]):
            checked = run("promtool", "check", "metrics", input=program.run("metrics", "--state", "", *words).stdout)
            self.assertEqual((checked.returncode, checked.stdout), (0, ""))


class Units(unittest.TestCase):
    @unittest.skipUnless(shutil.which("systemd-analyze"), "no systemd-analyze")
    def test_units(self):
        folder = program.path_of("units")
        folder.mkdir()
        for file in [*SOURCES.glob("*.timer"), SOURCES / "orfc-exporter@.service"]:
            # What is verified must be able to start.
            (folder / file.name).write_text(file.read_text().replace("/usr/bin/orfc", program.PROGRAM))
        timers = sorted(folder.glob("*.timer"))
        self.assertEqual(len(timers), 2)
        for timer in timers:
            service = re.search("^Unit=(.*)$", timer.read_text(), re.MULTILINE)[1]
            shutil.copy(folder / "orfc-exporter@.service", folder / service)
            verified = run("systemd-analyze", "verify", "--man=no", str(timer), str(folder / service))
            self.assertEqual((verified.returncode, verified.stdout), (0, ""))
            words = re.search("^ExecStart=\\S+ (.*)$", (folder / service).read_text(), re.MULTILINE)[1]
            part = re.search("@(.*)\\.", service)[1]
            output = folder / "x.prom"
            words = [str(output) if word.endswith(".prom") else word for word in words.replace("%i", part).split()]
            self.assertEqual(program.run(*words, "--state", "").returncode, 0)
            self.assertIn(f'what="{part}"', output.read_text())


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


class Chain(unittest.TestCase):
    def setUp(self):
        self.folder = program.path_of("chain")
        self.collected = self.folder / "textfile"
        self.collected.mkdir(parents=True)
        exporter, self.server = (f"127.0.0.1:{free_port()}" for _ in range(2))
        (self.folder / "prometheus.yml").write_text(json.dumps({
            "global": {"scrape_interval": "1s", "evaluation_interval": "1s"}, "rule_files": [str(RULES)],
            "scrape_configs": [{"job_name": "node", "static_configs": [{"targets": [exporter]}]}]}))
        self.start("prometheus-node-exporter", f"--web.listen-address={exporter}", "--collector.disable-defaults",
                   "--collector.textfile", f"--collector.textfile.directory={self.collected}")
        self.start("prometheus", f"--config.file={self.folder}/prometheus.yml", f"--web.listen-address={self.server}",
                   f"--storage.tsdb.path={self.folder}/data")

    def start(self, *command):
        log = open(self.folder / f"{command[0]}.log", "wb")  # pylint: disable=consider-using-with
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        log.close()

        def stop():
            process.terminate()
            try:
                process.wait(20)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self.addCleanup(stop)

    def write(self, described):
        for part in ("counters", "transceivers"):
            finished = program.run("metrics", "--part", part, "--state", str(self.folder / f"{part}.json"), "--output",
                                   str(self.collected / f"orfc-{part}.prom"), host=described)
            self.assertEqual((finished.returncode, finished.stderr), (0, ""))

    def ask(self, path, **parameters):
        address = f"http://{self.server}/api/v1/{path}?{urllib.parse.urlencode(parameters)}"
        with urllib.request.urlopen(address, timeout=10) as answer:
            return json.load(answer)["data"]

    def values(self, query):
        return [float(sample["value"][1]) for sample in self.ask("query", query=query)["result"]]

    def alerts(self):
        return {(alert["labels"]["alertname"], alert["labels"].get("port", "")): alert["state"]
                for alert in self.ask("alerts")["alerts"]}

    def wait(self, what, condition, seconds=30):
        end = time.monotonic() + seconds
        while True:
            try:
                if condition():
                    return
            except (urllib.error.URLError, ConnectionError, TimeoutError):  # it is starting
                pass
            if time.monotonic() > end:
                logs = "".join(file.read_text()[-2000:] for file in self.folder.glob("*.log"))
                self.fail(f"{what}: not within {seconds} s\n{logs}")
            time.sleep(0.2)

    def test_from_the_port_to_the_alert(self):
        good = host("good")
        self.write(good)
        self.wait("an answer", lambda: self.values(f'orfc_port_up{{port="{PORT}",port_name="2100000000000001"}}') == [1])
        self.assertEqual(self.values("node_textfile_scrape_error"), [0])
        # Every sample of the files has arrived.
        written = sum(not line.startswith("#") for file in self.collected.glob("*.prom") for line in file.read_text().splitlines())
        self.wait("all samples", lambda: self.values('count({__name__=~"orfc_.*"})') == [written])
        self.assertEqual(self.alerts(), {})
        # What the dashboard asks is answered: nothing is misspelt.
        dashboard = json.loads((SOURCES / "orfc-dashboard.json").read_text())
        for panel in dashboard["panels"]:
            for target in panel["targets"]:
                self.ask("query", query=target["expr"].replace("$instance", ".*"))

        self.write(host("bad", Counters={"invalid_crc_count": 1000}, Kernel={"State": "Linkdown"}))
        self.wait("the alerts", lambda: self.alerts().get(("OrfcCrcRate", PORT)) == "firing"
                  and ("OrfcLinkDown", PORT) in self.alerts())
        self.assertEqual(self.values("orfc_port_up"), [0])
        self.assertEqual(self.alerts()["OrfcLinkDown", PORT], "pending")  # for a minute

        self.write(good)
        self.wait("recovery", lambda: ("OrfcLinkDown", PORT) not in self.alerts() and self.values("orfc_port_up") == [1])
        (self.collected / "orfc-counters.prom").unlink()
        self.wait("silence", lambda: not self.values("orfc_port_up"))


if __name__ == "__main__":
    unittest.main()
