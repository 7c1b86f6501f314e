# orfc: help

  $ . "$TESTDIR/setup.sh"
  $ orfc --help
  Shows Fibre Channel adapters, ports, storage and the paths to it.
  Usage: orfc [OPTIONS] [SUBCOMMAND]
  
  Options:
    --version                   Show the version
    -h,--help                   Show this help
    -o,--output FORMAT          Format: table, wide, json, csv or esxcli
    --columns KEY,KEY           Columns of a table or CSV: keys, with commas between them
    --no-headings               No line of headings in a table or CSV
    --sort KEY                  Sort by a column: its key, after a - in descending order
    --color WHEN                Mark verdicts with colours: auto, always or never
    --library LIBRARY           Management library: linux, simulator or the path of one
    --root FILE                 Capture, or folder with a captured sys/, instead of this machine's
  
  Subcommands:
    adapters                    adapters, one line each
    ports                       ports, one line each
    targets                     targets, one line for each port that sees one
    luns                        LUNs and namespaces, one line for each path
    show                        everything that is known of an object
    transceivers                modules with their readings, thresholds and verdicts
    counters                    counters, or what moves in them
    paths                       LUNs by worldwide id, with every path to each
    ping                        echo frames to remote ports
    health                      a verdict for every object, with its reason
    metrics                     metrics for a collector
    names                       every name that an object goes by
    capture                     the host in one file, to be shown elsewhere
    schema                      the JSON schema of all output
  
  Examples:
    orfc
    orfc --library simulator
  $ orfc --version | sed 's/[0-9.]*$/N/'
  orfc N
  $ for command in adapters ports targets luns show transceivers counters paths ping health metrics names capture schema; do
  >   echo "== $command"; orfc $command --help
  > done
  == adapters
  adapters, one line each
  Usage: orfc adapters [OPTIONS] [NAME...]
  
  Positionals:
    NAME TEXT ...               Names of objects, in any spelling
  
  Options:
    -h,--help                   Show this help
  
  Lists adapters: all, or those that are named or have what is named.
  
  The options of every command: orfc --help
  
  Examples:
    orfc adapters
    orfc adapters -o json
  == ports
  ports, one line each
  Usage: orfc ports [OPTIONS] [NAME...]
  
  Positionals:
    NAME TEXT ...               Names of objects, in any spelling
  
  Options:
    -h,--help                   Show this help
  
  Lists Fibre Channel and FCoE ports: all, or those that are named or lead to what is named.
  
  The options of every command: orfc --help
  
  Examples:
    orfc ports
    orfc ports --columns port,state,speed_gbps
    orfc ports host2 -o json
  == targets
  targets, one line for each port that sees one
  Usage: orfc targets [OPTIONS] [NAME...]
  
  Positionals:
    NAME TEXT ...               Names of objects, in any spelling
  
  Options:
    -h,--help                   Show this help
  
  Lists targets: all, or those that are named, seen by what is named or have it.
  
  The options of every command: orfc --help
  
  Examples:
    orfc targets
    orfc targets 50060e80124a7c10
  == luns
  LUNs and namespaces, one line for each path
  Usage: orfc luns [OPTIONS] [NAME...]
  
  Positionals:
    NAME TEXT ...               Names of objects, in any spelling
  
  Options:
    -h,--help                   Show this help
  
  Lists LUNs and namespaces: all, or those that are named or reached over what is named.
  
  The options of every command: orfc --help
  
  Examples:
    orfc luns
    orfc luns sdb
    orfc luns --sort -size_bytes
  == show
  everything that is known of an object
  Usage: orfc show [OPTIONS] NAME...
  
  Positionals:
    NAME TEXT ... REQUIRED      Names of objects, in any spelling
  
  Options:
    -h,--help                   Show this help
    --far                       Ask the far end of each link too, which sends a frame
  
  Shows every known value of the named adapters, ports, targets and LUNs, with its key, by groups.
  
  The options of every command: orfc --help
  
  Examples:
    orfc show host2
    orfc show 21:00:00:24:ff:7e:2d:94
    orfc show /dev/sdb
  == transceivers
  modules with their readings, thresholds and verdicts
  Usage: orfc transceivers [OPTIONS] [NAME...]
  
  Positionals:
    NAME TEXT ...               Names of objects, in any spelling
  
  Options:
    -h,--help                   Show this help
    --far                       Ask the far end of each link too, which sends a frame
  
  Shows the module of each port: who made it, its readings with the four thresholds of each, power in mW and dBm, and a verdict by the standards' arithmetic.
  
  The options of every command: orfc --help
  
  Examples:
    orfc transceivers
    orfc transceivers host2 --far
    orfc transceivers --sort receive_power_dbm -o csv
  == counters
  counters, or what moves in them
  Usage: orfc counters [OPTIONS] [NAME...]
  
  Positionals:
    NAME TEXT ...               Names of objects, in any spelling
  
  Options:
    -h,--help                   Show this help
    --interval SECONDS          Read again every so many seconds
    --count N                   End after so many readings
  
  Shows the counters of ports and targets; with an interval, those that moved in it.
  
  The options of every command: orfc --help
  
  Examples:
    orfc counters host2
    orfc counters --interval 5 --count 12
  == paths
  LUNs by worldwide id, with every path to each
  Usage: orfc paths [OPTIONS] [NAME...]
  
  Positionals:
    NAME TEXT ...               Names of objects, in any spelling
  
  Options:
    -h,--help                   Show this help
  
  Shows LUNs by worldwide id and below each every path to it: the state of each step, from the link to the multipath map, and a verdict. What is not redundant is marked.
  
  The options of every command: orfc --help
  
  Examples:
    orfc paths
    orfc paths mpatha
    orfc paths FC_21:00:00:24:ff:7e:2d:94
  == ping
  echo frames to remote ports
  Usage: orfc ping [OPTIONS] NAME...
  
  Positionals:
    NAME TEXT ... REQUIRED      Names of objects, in any spelling
  
  Options:
    -h,--help                   Show this help
    --interval SECONDS          Seconds between two frames, 1 if not given
    --count N                   Frames to each remote port, 5 if not given
  
  Sends echo frames (ELS ECHO) from the port that is named first to the remote ports that are named after it, or to all that it sees, and tells how many came back unchanged, and when. Needs the right to send frames.
  
  The options of every command: orfc --help
  
  Examples:
    orfc ping host2
    orfc ping host2 50:06:0e:80:12:4a:7c:10 --count 100
    orfc ping host2 --interval 0.1 -o json
  == health
  a verdict for every object, with its reason
  Usage: orfc health [OPTIONS] [NAME...]
  
  Positionals:
    NAME TEXT ...               Names of objects, in any spelling
  
  Options:
    -h,--help                   Show this help
    --far                       Ask the far end of each link too, which sends a frame
    --rules FILE                File that changes bounds and switches rules off
    --state FILE                File of earlier readings, to compare with; an empty name for none
    --explain RULE              Tell what a rule means and what to do
    --nagios                    One line with performance data for a checker, and its exit status
    --interval SECONDS          Compare with a reading so many seconds before, and not with the kept ones
  
  Judges every adapter, port, link, transceiver, target, path and LUN by rules and shows what isn't well: the reason in words, the figures that led to it, and the rule. Counters are compared with those of the last run, transmit power with the highest of 32 days; both are kept in a file, /var/lib/orfc/health.json for root and orfc/health.json below $XDG_STATE_HOME or ~/.local/state for others.
  
  The options of every command: orfc --help
  
  Examples:
    orfc health
    orfc health host2 --far
    orfc health --interval 10
    orfc health --explain link-down
    orfc health --nagios
  == metrics
  metrics for a collector
  Usage: orfc metrics [OPTIONS]
  
  Options:
    -h,--help                   Show this help
    --rules FILE                File that changes bounds and switches rules off
    --state FILE                File of earlier readings, to compare with; an empty name for none
    --part PART                 One part of it: counters or transceivers
    --output FILE               File to replace; its name ends in .prom
  
  Writes ports, counters, transceivers, targets, paths and what health finds in the text format of Prometheus: to standard output, or to a file for the node exporter's textfile collector, which is replaced as a whole. What is unknown has no sample. Counters are compared with those of the last run, as in health; those are kept in metrics.json or metrics-PART.json.
  
  The options of every command: orfc --help
  
  Examples:
    orfc metrics
    orfc metrics --part counters --output /var/lib/prometheus/node-exporter/orfc-counters.prom
  == names
  every name that an object goes by
  Usage: orfc names [OPTIONS]
  
  Options:
    -h,--help                   Show this help
  
  Lists the names that commands take, and what goes by each.
  
  The options of every command: orfc --help
  
  Examples:
    orfc names
    orfc names --columns name --no-headings
  == capture
  the host in one file, to be shown elsewhere
  Usage: orfc capture [OPTIONS] [FILE]
  
  Positionals:
    FILE TEXT                   File to write; its name should end in .tar.xz
  
  Options:
    -h,--help                   Show this help
    --force                     Replace an existing file
  
  Writes what the kernel tells of Fibre Channel ports, remote ports, LUNs and paths to a file, which --root takes in place of a folder: every command then shows this host as it was. Counters are read twice, a second apart. capture.json in it lists what couldn't be read, output/ has what the commands print. Without a name the file is named after the host and the time.
  
  The options of every command: orfc --help
  
  Examples:
    orfc capture
    orfc capture host.tar.xz
  == schema
  the JSON schema of all output
  Usage: orfc schema [OPTIONS]
  
  Options:
    -h,--help                   Show this help
  
  Prints the JSON schema of everything that -o json writes.
