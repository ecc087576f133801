#!/usr/bin/env bash
# Writes a set of demo applications (desktop entries with icons from the
# Adwaita theme) into DIR/applications, for screenshots, benchmarks and trying
# Tillmora on a bare machine:  XDG_DATA_DIRS=DIR:/usr/share tillmora
set -euo pipefail
dir="${1:?usage: demo-apps.sh DIR [COUNT]}"
count="${2:-0}"
mkdir -p "$dir/applications"

apps=(
  "Calculator:accessories-calculator" "Text Editor:accessories-text-editor" "Character Map:accessories-character-map"
  "Dictionary:accessories-dictionary" "Screenshot:applets-screenshooter" "Address Book:address-book-new"
  "Calendar:appointment-new" "Music:audio-x-generic" "Camera:camera-photo" "Videos:camera-video"
  "Contacts:contact-new" "Files:folder" "Documents:folder-documents" "Downloads:folder-download"
  "Fonts:font-x-generic" "Help:help-browser" "Games:applications-games" "Graphics:applications-graphics"
  "Web Browser:applications-internet" "Office:applications-office" "Science Lab:applications-science"
  "Settings:applications-system" "Utilities:applications-utilities" "Developer Tools:applications-development"
  "Engineering:applications-engineering" "Disks:drive-harddisk" "Printers:document-print" "Mail:emblem-mail"
  "Photos:emblem-photos" "Headphones:audio-headphones" "Power:battery-full" "Computer:computer"
  "Passwords:dialog-password" "Image Viewer:image-x-generic" "Touchpad:input-touchpad" "Gamepad:input-gaming"
  "Trash:user-trash" "Home:user-home" "Network:network-workgroup" "Server Admin:network-server"
  "Café Menu:emblem-favorite" "Recent Files:document-open-recent" "Archive Manager:emblem-package"
  "Sync:emblem-synchronizing" "Web Apps:emblem-web"
)

# The desktop menu's main category of a few, so new folders get named by them.
category_of() {
  case "$1" in
    Games|Gamepad) echo "Game;" ;;
    Calculator|"Text Editor"|"Character Map"|Screenshot|Utilities|"Archive Manager") echo "Utility;" ;;
    Office|Documents|"Address Book"|Calendar|Contacts|Printers) echo "Office;" ;;
    Music|Videos|Camera|Headphones) echo "AudioVideo;" ;;
    Graphics|Photos|"Image Viewer") echo "Graphics;" ;;
    *) echo "" ;;
  esac
}

write_entry() { # id name icon
  cat > "$dir/applications/$1.desktop" <<ENTRY
[Desktop Entry]
Type=Application
Name=$2
Exec=true
Icon=$3
Terminal=false
Categories=$(category_of "$2")
ENTRY
}

i=0
for entry in "${apps[@]}"; do
  name="${entry%%:*}"
  icon="${entry#*:}"
  write_entry "demo.$(echo "$name" | tr 'A-Z ' 'a-z-' | tr -cd 'a-z0-9-')" "$name" "$icon"
  i=$((i + 1))
done
# Extra numbered apps when a larger catalogue is wanted.
while [ "$i" -lt "$count" ]; do
  write_entry "demo.app$i" "App $i" "application-x-executable"
  i=$((i + 1))
done
echo "$i demo applications in $dir/applications"
