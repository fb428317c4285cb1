# How ./board makes what the emulator boots, below build/board: each step once, until its input changes.
#   kernel/      Debian's kernel and static busybox, unpacked
#   base/        a 32-bit ARM Debian with what the packages depend on
#   root.img     base with the project's packages and image/root: the board's read-only root
#   first.img    the first stage: splash, modules, image/init
#   data.img     the board's data partition, which ./board --reset makes anew

board=build/board
board_kernel_packages=linux-image-armmp,busybox-static
board_base_packages=systemd-sysv,udev,dbus,kmod,iproute2,can-utils,adduser,libqt5widgets5,libqt5multimedia5,libqt5serialbus5,libqt5serialbus5-plugins,libqt5serialport5,fonts-liberation,fonts-dejavu-core

# board_step NAME INPUT COMMAND...: says and does it unless it was done with this input.
board_step() {
    local name=$1 input=$2 stamp=$board/$1.stamp start=$SECONDS
    shift 2
    [ -f "$stamp" ] && [ "$(cat "$stamp")" = "$input" ] && return 0
    mkdir -p "$board"
    rm -f "$stamp"
    echo "board: $name"
    "$@" >"$(norda_log "board-$name")" 2>&1 || norda_fail "board-$name"
    echo "$input" >"$stamp"
    echo "board: $name took $((SECONDS - start)) s"
}

# What the packages are made of. Only what is installed counts of what is built.
board_built="packaging moduled build/armhf/lib build/armhf/plugins build/armhf/share
    build/armhf/bin/norda-unit build/armhf/bin/norda-moduled build/armhf/bin/norda-ecu"

board_hash() {
    find "$@" -type f -print0 | sort -z | xargs -0 sha256sum | sha256sum | cut -d' ' -f1
}

# Setting up ARM packages runs ARM programs: the kernel has to know their interpreter.
board_register_interpreter() {
    [ -e /proc/sys/fs/binfmt_misc/status ] ||
        mount -t binfmt_misc none /proc/sys/fs/binfmt_misc
    [ -e /proc/sys/fs/binfmt_misc/qemu-arm ] || update-binfmts --enable qemu-arm
}

board_unpack_kernel() {
    rm -rf $board/kernel
    norda_main_archive | mmdebstrap --architectures=armhf --variant=extract \
        --include="$board_kernel_packages" "" $board/kernel -
    depmod -b $board/kernel "$(ls $board/kernel/lib/modules)"
}

board_install_base() {
    board_register_interpreter
    rm -rf $board/base
    norda_main_archive | mmdebstrap --architectures=armhf --variant=minbase \
        --dpkgopt='path-exclude=/usr/share/man/*' --dpkgopt='path-exclude=/usr/share/doc/*' \
        --dpkgopt='path-exclude=/usr/share/locale/*' \
        --include="$board_base_packages" "" $board/base -
}

board_packages() {
    rm -f build/armhf/packages/*.deb
    (cd build/armhf && cpack -G DEB -D CPACK_COMPONENTS_ALL="plugin;host;unit;moduled;ecu")
}

# The first stage's own modules with those that they need.
board_first_modules() {
    local version=$1 folder=$2 name
    mkdir -p "$folder/lib/modules/$version"
    cp $board/kernel/lib/modules/"$version"/modules.{order,builtin,builtin.modinfo} \
        "$folder/lib/modules/$version/"
    for name in virtio_pci virtio-gpu virtio_blk crc32c_generic ext4 autofs4; do
        modprobe -d "$PWD/$board/kernel" -S "$version" --show-depends "$name"
    done | sed -n 's/^insmod \([^ ]*\).*/\1/p' | sort -u | while read -r name; do
        cp "$name" "$folder/lib/modules/$version/"
    done
    depmod -b "$folder" "$version"
}

board_pack_first() {
    local version folder=$board/first
    version=$(ls $board/kernel/lib/modules)
    rm -rf $folder
    mkdir -p $folder/bin $folder/dev $folder/proc $folder/sys $folder/root
    cp $board/kernel/bin/busybox $folder/bin/
    cp image/init $folder/init
    board_first_modules "$version" $folder
    rsvg-convert image/splash.svg | convert-im6.q16 png:- -depth 8 bgra:$folder/splash
    (cd $folder && find . | cpio --quiet -o -H newc -R 0:0) | gzip -9n >$board/first.img
    cp "$board/kernel/boot/vmlinuz-$version" $board/vmlinuz
}

board_configure_root() {
    local root=$1 service
    tar -C image/root --owner=0 --group=0 --mode=u=rwX,go=rX -c . | tar -C "$root" -x
    cp -r $board/kernel/lib/modules "$root/lib/"
    : >"$root/etc/machine-id"
    ln -sf /etc/machine-id "$root/var/lib/dbus/machine-id"
    rm -rf "$root/etc/fstab" "$root/var/log"/* "$root/etc/fonts/conf.d" "$root/usr/share/fontconfig"
    rm -rf "$root"/usr/lib/*/qt5/plugins/imageformats # all pictures are PNG, which Qt reads by itself
    mkdir -p "$root/var/lib/norda" "$root/var/log/norda" "$root/var/cache/norda-unit"
    while read -r service; do
        rm -f "$root/etc/systemd/system"/*.wants/"$service"
        ln -sf /dev/null "$root/etc/systemd/system/$service"
    done <image/masked
    # They read files which this board does not have: without any, systemd starts no process for them.
    rm -rf "$root"/lib/systemd/system*-generators
    ln -sf /lib/systemd/system/multi-user.target "$root/etc/systemd/system/default.target"
    # An image has time stamps without fractions, by which fonts are known to be in the cache.
    find "$root/usr/share/fonts" -type d -exec touch -d @0 {} +
    chroot "$root" fc-cache
    chroot "$root" systemctl enable vcan0 norda-ecu norda-moduled norda-unit board-report \
        board-console
    rm -rf "$root/packages" "$root/var/cache/apt" "$root/var/lib/apt/lists"/*
    touch "$root/etc/.updated" "$root/var/.updated"
}

board_remove_root() {
    umount "$1" 2>/dev/null || true
    rm -rf "$1"
}

board_make_root() {
    local root=$board/root
    board_register_interpreter
    board_remove_root $root
    rm -f $board/root.img
    mkdir $root
    mount -t tmpfs -o mode=755 tmpfs $root || true # on the disk it takes a minute longer
    cp -a $board/base/. $root
    mkdir $root/packages
    cp build/armhf/packages/*.deb $root/packages
    chroot $root sh -c 'dpkg -i /packages/*.deb'
    board_configure_root $root
    chroot $root id -u norda >$board/user
    mke2fs -q -F -t ext4 -O ^has_journal -L norda-root -m 0 -d $root $board/root.img 800M
    board_remove_root $root
}

board_make_data() {
    local user folder=$board/data
    user=$(cat $board/user)
    rm -rf $folder $board/data.img
    mkdir -p $folder/log
    chown -R "$user" $folder
    mke2fs -q -F -t ext4 -L norda-data -m 0 -E "root_owner=$user:$user" -d $folder \
        $board/data.img 64M
    rm -rf $folder
}

# board_build_base: what does not depend on the project; takes root, like installing packages.
board_build_base() {
    board_step kernel "$board_kernel_packages" board_unpack_kernel
    board_step base "$board_base_packages" board_install_base
}

# board_build: everything up to root.img; takes root, too.
board_build() {
    norda_sysroot
    norda_build armhf norda_board
    board_build_base
    # shellcheck disable=SC2086
    board_step packages "$(board_hash $board_built)" board_packages
    board_step root "$(cat $board/base.stamp $board/packages.stamp) $(board_hash image/root image/masked image/build.sh)" board_make_root
    board_step first "$(cat $board/kernel.stamp) $(board_hash image/init image/splash.svg image/build.sh)" board_pack_first
    [ -f $board/data.img ] || board_make_data
}
