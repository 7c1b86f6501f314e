#!/usr/bin/python3
"""Metrics: a text that collectors take whole, what is in it, and the file that is replaced for them."""
import json
import os
import re
import resource
import signal
import time
import unittest

import program
from program import run

SAMPLE = re.compile(r'([a-z_:][a-z0-9_:]*)(?:\{((?:[a-z_]+="(?:[^"\\\n]|\\[\\"n])*",?)*)\})? (\S+)')
LABEL = re.compile(r'([a-z_]+)="((?:[^"\\]|\\.)*)"')
ADAPTER = {"Model": "M", "SerialNumber": "S"}


def port(number, **more):
    return {"WWPN": f"21:00:00:00:00:00:00:{number:02x}", "Kernel": {"KernelName": f"host{number}", "State": "Online"}, **more}


def host(name, *adapters):
    return program.host_file(name, {"Adapters": [
        {**adapter, "PhyPorts": [{"Protocols": [port]} for port in ports]} for adapter, ports in adapters]})


class Case(unittest.TestCase):
    def parse(self, text):
        """The samples by name and labels. Refuses what the node exporter drops a file or a sample for."""
        self.assertTrue(text.endswith("\n"))
        samples, types, helps, last = {}, {}, set(), None
        for line in text[:-1].split("\n"):
            if line.startswith("# HELP "):
                name = line.split()[2]
                self.assertNotIn(name, helps)
                self.assertRegex(line, r"\A# HELP \S+ ([^\\]|\\[\\n])*\.\Z")
                helps.add(name)
                continue
            if line.startswith("# TYPE "):
                _, _, name, kind = line.split()
                self.assertNotIn(name, types)
                self.assertRegex(name, r"\Aorfc_[a-z0-9_]+\Z")
                self.assertEqual(kind, "counter" if name.endswith("_total") else "gauge")
                types[name] = kind
                last = name
                continue
            found = SAMPLE.fullmatch(line)  # without a time stamp
            self.assertTrue(found, line)
            name, labels, value = found.groups()
            self.assertEqual(name, last)
            self.assertIn(name, helps)
            key = (name, *sorted(LABEL.findall(labels or "")))
            self.assertEqual(len(dict(key[1:])), len(key) - 1)
            self.assertNotIn(key, samples)
            samples[key] = float(value)
        return samples

    def metrics(self, *words, status=0, **more):
        finished = run("metrics", "--state", "", *words, **more)
        self.assertEqual(finished.returncode, status, finished.stderr)
        return self.parse(finished.stdout) if finished.stdout else {}

    @staticmethod
    def pick(samples, name, **labels):
        """Values of a name by those of its labels that aren't given."""
        return {tuple(value for label, value in key[1:] if label not in labels and label not in ("port", "fc_host")): value
                for key, value in samples.items()
                if key[0] == name and labels.items() <= dict(key[1:]).items()}


class Text(Case):
    def test_hosts(self):
        for more in ({}, {"tree": "fcoe"}, {"tree": "degraded"}, {"tree": "npiv"}, {"host": program.host_file("empty", {"Adapters": []})},
                     {"library": program.library_without("VEXAPI_Ext")}):
            samples = self.metrics(**more)
            self.assertEqual(set(self.pick(samples, "orfc_scrape_success").values()), {1})
        self.assertFalse([key for key in samples if key[0].startswith("node_")])

    def test_ports(self):
        samples = self.metrics(host=host("ports", (ADAPTER, [
            port(1, PortSpeed=22, Counters={"invalid_crc_count": 7, "fcp_input_megabytes": 3, "seconds_since_last_reset": 90,
                                            "fpin_cn": 2, "odd Name-": 1}),
            port(2, Kernel={"KernelName": "host2", "State": "Linkdown"}, Counters={"invalid_crc_count": 0})])))
        first, second = "2100000000000001", "2100000000000002"
        self.assertEqual(self.pick(samples, "orfc_port_up"), {(first,): 1, (second,): 0})
        self.assertEqual(self.pick(samples, "orfc_port_speed_bytes_per_second"), {(first,): 16e9 / 8})
        self.assertEqual(self.pick(samples, "orfc_port_invalid_crc_total"), {(first,): 7, (second,): 0})
        self.assertEqual(self.pick(samples, "orfc_port_fcp_input_bytes_total"), {(first,): 3 * 2**20})
        self.assertEqual(self.pick(samples, "orfc_port_since_reset_seconds"), {(first,): 90})
        self.assertEqual(self.pick(samples, "orfc_port_fpin_cn_total"), {(first,): 2})
        self.assertEqual(self.pick(samples, "orfc_port_odd__ame__total"), {(first,): 1})
        info = [dict(key[1:]) for key in samples if key[0] == "orfc_port_info"][0]
        self.assertEqual({"port": "FC_21:00:00:00:00:00:00:01", "port_name": first, "adapter": "Adapter_M_S", "model": "M",
                          "serial_number": "S", "fc_host": "host1"}, info)

    def test_transceivers(self):
        """The lab's module with four lanes, and the readings that a table shows of another."""
        samples = self.metrics()
        lanes = self.pick(samples, "orfc_transceiver_receive_power_dbm", port="FC_21:00:00:24:ff:a6:77:0c")
        self.assertEqual([lane for lane, _ in lanes], ["1", "2", "3", "4"])
        name = "FC_21:00:00:24:ff:92:0f:38"
        shown = next(record for record in program.records("transceivers", name))
        for key, metric, scale, labels in (
                ("temperature_celsius", "temperature_celsius", 1, {}), ("voltage_volts", "supply_volts", 1, {}),
                ("bias_milliamperes", "bias_amperes", 1e-3, {}), ("transmit_power_dbm", "transmit_power_dbm", 1, {}),
                ("receive_power_low_alarm_dbm", "receive_power_threshold_dbm", 1, {"severity": "alarm", "bound": "low"}),
                ("temperature_high_warning_celsius", "temperature_threshold_celsius", 1, {"severity": "warning", "bound": "high"})):
            value, = self.pick(samples, f"orfc_transceiver_{metric}", port=name, **labels).values()
            self.assertAlmostEqual(value, shown[key] * scale, delta=0.051 * scale)
        self.assertEqual(set(self.pick(samples, "orfc_transceiver_verdict", port=name).values()), {0})
        # Without light there is no dBm: no sample. Its verdict is an alarm.
        dark = "FC_21:00:00:24:ff:18:a4:e1"
        self.assertEqual(self.pick(samples, "orfc_transceiver_receive_power_dbm", port=dark), {})
        self.assertEqual(list(self.pick(samples, "orfc_transceiver_verdict", port=dark, reading="receive_power").values()), [2])
        self.assertEqual(set(self.pick(samples, "orfc_transceiver_present", port="FC_21:00:00:24:ff:08:65:93").values()), {0})

    def test_targets_and_paths(self):
        samples = self.metrics()
        paths = json.loads(run("paths", "host13", "-o", "json").stdout)["records"]
        own = [record["verdict"] for record in paths if record["host"] == "host13"]
        expected = {"up": sum(verdict in ("ok", "standby") for verdict in own)}
        for verdict in set(own) - {"ok", "standby"}:
            expected[verdict] = own.count(verdict)
        found = self.pick(samples, "orfc_paths", port="FC_21:00:00:24:ff:a6:77:0c")
        self.assertEqual({state: count for (_, state), count in found.items()}, expected)
        self.assertEqual({state: count for (_, state), count in
                          self.pick(samples, "orfc_targets", port="FC_21:00:00:24:ff:1d:90:06").items()}, {"up": 0, "down": 2})

    def test_health(self):
        samples = self.metrics()
        findings = [record for record in program.records("health", "--state", "") if record["rule"]]
        for rule in json.loads(run("describe").stdout)["rules"]:
            count, = self.pick(samples, "orfc_health_rule_findings", rule=rule["name"], severity=rule["severity"]).values()
            self.assertEqual(count, sum(record["rule"] == rule["name"] for record in findings), rule["name"])
            self.assertEqual(sum(self.pick(samples, "orfc_health_findings", rule=rule["name"]).values()), count)
        self.assertTrue(self.pick(samples, "orfc_health_findings", rule="link-down", port="FC_21:00:00:24:ff:08:65:91"))

    def test_duplicate_objects(self):
        """Adapters without names, and ports with the same."""
        nameless = [({}, [port(1, PortSpeed=22), port(2, PortSpeed=50)]), ({}, [port(3, PortSpeed=22), port(4, PortSpeed=50)])]
        samples = self.metrics(host=host("nameless", *nameless))
        self.assertEqual(self.pick(samples, "orfc_health_findings", rule="speed-differs", adapter="Adapter__"), {("warning", "adapter"): 2})
        twins = program.host_file("twins", {"AllowDuplicateNames": 1, "Adapters": [
            {"PhyPorts": [{"Protocols": [port(1)]}, {"Protocols": [port(1)]}]}]})
        self.assertEqual(len(self.pick(self.metrics(host=twins), "orfc_port_up")), 1)

    def test_hostile_texts(self):
        hostile = {"bytes": "ff:fe:22:5c:0a:7b:7d:1b"}
        samples = self.metrics(host=host("hostile", ({"Model": hostile, "SerialNumber": 'a"b\\c\n'}, [
            port(1, Counters={"x\x1b\"{}\n": 1, "\xfc": 2}, RunningFwVersion=hostile)])))
        self.assertEqual(len(self.pick(samples, "orfc_port_info")), 1)

    def test_parts(self):
        """The two parts are the whole, and have no sample in common."""
        def names(samples):
            return {key for key in samples if key[0] != "orfc_last_run_timestamp_seconds"}
        whole, counters, modules = (names(self.metrics(*words)) for words in
                                    ([], ["--part", "counters"], ["--part", "transceivers"]))
        self.assertEqual(counters & modules, set())
        self.assertEqual(counters | modules, whole)

    def test_time_of_the_run(self):
        before = time.time()
        for value in self.pick(self.metrics(), "orfc_last_run_timestamp_seconds").values():
            self.assertTrue(before <= value <= time.time())

    def test_usage(self):
        for words in (["-o", "json"], ["--columns", "port"], ["--sort", "port"], ["--part", "x"], ["--output", "x.txt"], ["name"]):
            finished = run("metrics", *words)
            self.assertEqual((finished.returncode, finished.stdout), (2, ""), words)

    def test_what_could_not_be_read(self):
        for fault, what in (("VEXAPI_GetSFPData@1=5", "transceivers"), ("VEXAPI_ExtGetPort@1=5", "counters")):
            samples = self.metrics(status=3, environment={"VEXAPI_SIM_FAULTS": fault})
            success = {name: value for (name,), value in self.pick(samples, "orfc_scrape_success").items()}
            self.assertEqual(success, {"counters": 1, "transceivers": 1, what: 0})
        samples = self.metrics(status=1, library="/nonexistent")
        self.assertEqual({key[0] for key in samples}, {"orfc_scrape_success", "orfc_last_run_timestamp_seconds"})
        self.assertEqual(set(self.pick(samples, "orfc_scrape_success").values()), {0})


class Dashboard(Case):
    def test_names_exist(self):
        """Every name that the dashboard and the alerts ask for is one of the lab's."""
        known = {key[0] for key in self.metrics()}
        for file in (program.ROOT / "integration/prometheus/orfc-dashboard.json", program.BUILD / "integration/orfc.rules.yml"):
            asked = set(re.findall(r"\borfc_\w+", file.read_text()))
            self.assertGreater(len(asked), 2)
            self.assertLessEqual(asked, known)


class File(Case):
    def setUp(self):
        self.folder = program.path_of("collector")
        self.folder.mkdir(exist_ok=True)
        for file in self.folder.iterdir():
            file.unlink()
        self.file = self.folder / "orfc.prom"

    def test_is_replaced(self):
        os.umask(0o077)
        for _ in range(2):
            self.assertEqual(self.metrics("--output", str(self.file)), {})
            self.assertTrue(self.parse(self.file.read_text()))
            self.assertEqual(self.file.stat().st_mode & 0o777, 0o644)
        self.assertEqual([file.name for file in self.folder.glob("*.prom")], ["orfc.prom"])
        # A failure is told there too.
        self.metrics("--output", str(self.file), status=1, library="/nonexistent")
        self.assertEqual(set(self.pick(self.parse(self.file.read_text()), "orfc_scrape_success").values()), {0})

    def test_is_kept_where_it_can_not_be_replaced(self):
        self.metrics("--output", str(self.file))
        before = self.file.read_bytes()

        def fill():
            resource.setrlimit(resource.RLIMIT_FSIZE, (9, 9))
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        finished = run("metrics", "--state", "", "--output", str(self.file), preexec_fn=fill)
        self.assertEqual(finished.returncode, 1)
        self.assertRegex(finished.stderr, r"\Aorfc: [^\n]*File too large\n\Z")
        self.assertEqual(self.file.read_bytes(), before)
        self.assertEqual({file.name for file in self.folder.iterdir()}, {"orfc.prom", "orfc.prom.lock"})

    def test_links(self):
        """A link is replaced, and nothing is written through it."""
        precious = program.path_of("precious")
        precious.write_text("precious")
        for name in ("orfc.prom", "orfc.prom.new"):
            (self.folder / name).symlink_to(precious)
        self.metrics("--output", str(self.file))
        self.assertTrue(self.file.is_file() and not self.file.is_symlink())
        (self.folder / "orfc.prom.lock").unlink()
        (self.folder / "orfc.prom.lock").symlink_to(precious)
        self.metrics("--output", str(self.file), status=1)
        self.assertEqual(precious.read_text(), "precious")

    def test_no_folder(self):
        finished = run("metrics", "--state", "", "--output", "/nonexistent/x.prom")
        self.assertEqual((finished.returncode, finished.stdout), (1, ""))
        self.assertRegex(finished.stderr, r"\Aorfc: /nonexistent/x.prom.lock: No such file or directory\n\Z")


if __name__ == "__main__":
    unittest.main()
