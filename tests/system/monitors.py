"""Several screens of one desk, and what becomes of them: plugged in, unplugged, scaled."""

from __future__ import annotations

from Xlib import X, Xatom
from Xlib.ext import randr
from Xlib.protocol import rq

from virtual_screen import VirtualScreen


class SetMonitor(rq.Request):
    """The one of python3-xlib can't be sent."""

    _request = rq.Struct(
        rq.Card8("opcode"), rq.Opcode(43), rq.RequestLength(), rq.Window("window"),
        rq.Card32("name"), rq.Bool("primary"), rq.Bool("automatic"), rq.LengthOf("outputs", 2),
        rq.Int16("x"), rq.Int16("y"), rq.Card16("width"), rq.Card16("height"),
        rq.Card32("width_mm"), rq.Card32("height_mm"), rq.List("outputs", rq.Card32Obj))


def plug_in(screen: VirtualScreen, number: int, x: int, y: int, width: int, height: int) -> None:
    """A monitor that shows a part of the server's screen, or another part from now on. Number 0 is
    the primary one, and has to be there."""
    display = screen.display
    root = display.screen().root
    name = display.intern_atom(f"monitor{number}")
    if any(monitor.name == name for monitor in root.xrandr_get_monitors().monitors):
        unplug(screen, number)  # the server changes none that is there
    output = root.xrandr_get_screen_resources().outputs[0]
    SetMonitor(display=display.display, opcode=display.display.get_extension_major(randr.extname),
               window=root, name=name, primary=number == 0, automatic=False,
               x=x, y=y, width=width, height=height, width_mm=width // 4,
               height_mm=height // 4, outputs=[output] if number == 0 else [])
    display.sync()


def unplug(screen: VirtualScreen, number: int) -> None:
    root = screen.display.screen().root
    root.xrandr_delete_monitor(screen.display.intern_atom(f"monitor{number}"))
    screen.display.sync()


def scale_fonts(screen: VirtualScreen, percent: int) -> None:
    """As a desktop's settings do it, for the programs that start from now on."""
    display = screen.display
    display.screen().root.change_property(
        display.intern_atom("RESOURCE_MANAGER"), Xatom.STRING, 8,
        f"Xft.dpi:\t{96 * percent // 100}\n".encode("ascii"), X.PropModeReplace)
    display.sync()
