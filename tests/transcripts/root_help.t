# The root of the command tree

What a person types first. `help` lists the root's commands and the families.

  $ . "$TESTDIR/setup.sh"
  $ host lists
  $ orfc-esxcli help
  \r (esc)
  Following is the list of available commands.\r (esc)
  For detailed information of each command, please type 'command ?'\r (esc)
  All commands are case insensitive.\r (esc)
  \r (esc)
  q           : quit the program\r (esc)
  log         : log all command input and output to a file\r (esc)
  version     : display version of this program\r (esc)
  help        : list of available commands\r (esc)
  adapter     : use this command to get/set/list Orvane adapters\r (esc)
  port        : use this command to get/set/list Orvane Ports\r (esc)
  target      : use this command to get/list targets detected by Orvane adapters\r (esc)
  lun         : use this command to get/list LUNs detected by Orvane adapters\r (esc)
  
  For a complete help. Please refer to ORFC_ESXCLI_Readme.txt in the same folder.\r (esc)

The other spellings are commands of their own that stay out of the list. What follows them is of no
matter, and `?` after each asks for its usage, which is the list again.

  $ orfc-esxcli help >help.txt
  $ while read -r words; do
  >     orfc-esxcli $words | cmp - help.txt && echo "same: $words"
  > done <<'EOF'
  > ?
  > /h
  > /help
  > /?
  > HELP
  > /Help
  > help ?
  > ? ?
  > /h ?
  > /help ?
  > /? ?
  > help port
  > ? -t port list
  > /h x
  > EOF
  same: ?
  same: /h
  same: /help
  same: /?
  same: HELP
  same: /Help
  same: help ?
  same: ? ?
  same: /h ?
  same: /help ?
  same: /? ?
  same: help port
  same: ? -t port list
  same: /h x

Words before the command set the program's mode, in any letter case and order. No command of the present
tree needs one.

  $ while read -r words; do
  >     orfc-esxcli $words | cmp - help.txt && echo "same: $words"
  > done <<'EOF'
  > -eng help
  > -debug help
  > -ENG -Debug help
  > -debug -debug -eng ?
  > help -eng
  > EOF
  same: -eng help
  same: -debug help
  same: -ENG -Debug help
  same: -debug -debug -eng ?
  same: help -eng

After the first word of the command they are plain words.

  $ orfc-esxcli -t port -eng list
  Unknown command or invalid target identifier!\r (esc)
  $ orfc-esxcli -t adapter -debug list
  Unknown command or invalid target identifier!\r (esc)
