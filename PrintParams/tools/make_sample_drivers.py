#!/usr/bin/env python3
"""Writes the sample printer drivers: one .prs and one .pdv file per driver.

    PrintParams/tools/make_sample_drivers.py [samples folder]

The .prs format is described in docs/prs-format.md. The .pdv files hold the
printer's device parameters (heads, carriage, platen) as plain INI text;
the print-parameter library only reports their names.
"""

import json
import os
import sys


def res(x, y, passes):
    return {"text": f"{x}x{y} dpi {passes}pass", "textEn": f"{x}x{y} dpi {passes} pass", "xDpi": x, "yDpi": y}


def val(text, text_en=None):
    value = {"text": text}
    if text_en:
        value["textEn"] = text_en
    return value


def enum(enum_id, key, key_en, values, selected=0, kind=None):
    item = {"enumId": enum_id}
    if kind:
        item["kind"] = kind
    item["key"] = key
    if key_en:
        item["keyEn"] = key_en
    item["selected"] = selected
    item["values"] = values
    return item


def channels(names, orders, density=None, max_ink=None, off=()):
    density = density or {}
    max_ink = max_ink or {}
    return [{"name": n, "density": density.get(n, 0.0), "maxInk": max_ink.get(n, 1.0),
             "order": o, "on": n not in off} for n, o in zip(names, orders)]


def icc(rgb, cmyk, output, intent):
    return {"rgb": rgb, "cmyk": cmyk, "output": output, "intent": intent}


# The three settings every driver has, each of a kind of its own by which the
# print-parameter library finds it; their enum ids are the same in every
# sample. Values are given as res() and val() take them.
def resolutions(values, selected=0):
    return enum(1, "打印精度", "Resolution", [res(*v) for v in values], selected, "resolution")


def media(values, selected=0):
    return enum(2, "纸张", "Media", [val(*v) for v in values], selected, "paper")


def inks(values, selected=0):
    return enum(3, "墨水", "Ink", [val(*v) for v in values], selected, "ink")


# Common settings of a flatbed UV printer, shown in the property dialog's
# "其他属性" section. Enum ids are the same in every sample.
def direction(selected=0):
    return enum(10, "打印方向", "Print direction", [val("双向", "Bidirectional"), val("单向", "Unidirectional")],
                selected)


def white_ink_mode(selected=0):
    return enum(11, "白墨模式", "White ink mode",
                [val("彩色+白", "Colour+White"), val("白+彩色", "White+Colour"),
                 val("白+彩色+白", "White+Colour+White")], selected)


def head_voltage(selected=0):
    return enum(14, "喷头电压", "Head voltage", [val("标准", "Standard"), val("高", "High")], selected)


def pass_count(passes, selected=0):
    return enum(15, "PASS数", "Pass count",
                [val("按精度", "As resolution")] + [val(f"{p} pass", f"{p} pass") for p in passes], selected)


def uv_lamp(selected=1):
    return enum(17, "UV灯功率", "UV lamp power", [val("低", "Low"), val("中", "Medium"), val("高", "High")],
                selected)


def flash_spitting(selected=1):
    return enum(18, "闪喷", "Flash spitting", [val("关", "Off"), val("打印时", "While printing"),
                                               val("待机时", "While idle")], selected)


UV2513_NAMES = ["C", "M", "Y", "K", "White", "Varnish"]
UV2513_ORDER = [1, 2, 3, 4, 0, 5]
UV1610_NAMES = ["C", "M", "Y", "K", "LC", "LM"]
# Light inks first, as their heads sit ahead of the others on this carriage.
UV1610_ORDER = [2, 3, 4, 5, 0, 1]
UV3220_NAMES = ["Cyan", "Magenta", "Yellow", "Black", "LC", "LM", "Orange", "Green"]
UV3220_ORDER = [3, 2, 1, 0, 6, 7, 4, 5]

DRIVERS = {
    "BexUV2513_CMYKWV": {
        "driverName": "Bex UV2513 CMYK+W+V",
        "pdvFile": "BexUV2513_CMYKWV.pdv",
        "modeId": 1,
        "enums": [
            resolutions([(720, 600, 4), (720, 900, 6), (1440, 1200, 8)], 1),
            media([("亚克力", "Acrylic"), ("玻璃", "Glass"), ("金属", "Metal"), ("木板", "Wood")]),
            inks([("CMYK+白+光油", "CMYK+White+Varnish"), ("CMYK", "CMYK only")]),
            direction(),
            white_ink_mode(1),
            enum(12, "羽化", "Feathering", [val("关", "Off"), val("弱", "Weak"), val("强", "Strong")], 1),
            pass_count([4, 6, 8, 12]),
            head_voltage(),
            enum(16, "光油模式", "Varnish mode", [val("满版", "Flood"), val("局部", "Spot")], 1),
            uv_lamp(),
        ],
        "channels": channels(UV2513_NAMES, UV2513_ORDER, max_ink={"White": 0.9, "Varnish": 0.8}),
        "combinations": [
            {"resolution": 1, "paper": 0, "ink": 0,
             "icc": icc("Bex sRGB v4.icc", "Bex Coated CMYK.icc", "BexUV2513_Acrylic_720x900.icc", 0)},
            {"resolution": 1, "paper": 1, "ink": 0,
             "icc": icc("Bex sRGB v4.icc", "Bex Coated CMYK.icc", "BexUV2513_Glass_720x900.icc", 1),
             "channels": channels(UV2513_NAMES, UV2513_ORDER, density={"White": 0.5},
                                  max_ink={"White": 0.8, "Varnish": 0.6})},
            {"resolution": 2, "paper": 2, "ink": 0,
             "icc": icc("Bex Wide RGB v2.icc", "Bex Coated CMYK.icc", "BexUV2513_Metal_1440x1200.icc", 2)},
            {"resolution": 1, "paper": 3, "ink": 1,
             "channels": channels(UV2513_NAMES, [0, 1, 2, 3, 4, 5], off=("White", "Varnish"))},
        ],
    },
    "BexUV1610_CMYKLcLm": {
        "driverName": "Bex UV1610 CMYK+Lc+Lm",
        "pdvFile": "BexUV1610_CMYKLcLm.pdv",
        "modeId": 2,
        "enums": [
            resolutions([(540, 720, 3), (720, 1200, 6), (1440, 1440, 12)], 1),
            media([("PVC", "PVC"), ("皮革", "Leather"), ("帆布", "Canvas"), ("手机壳", "Phone case")]),
            inks([("六色", "6 colours"), ("四色", "4 colours")]),
            direction(),
            enum(13, "图像质量", "Quality", [val("标准", "Standard"), val("精细", "Fine")], 0),
            pass_count([3, 6, 12], 2),
            head_voltage(selected=1),
            enum(19, "墨滴大小", "Drop size", [val("小", "Small"), val("中", "Medium"), val("大", "Large"),
                                               val("可变", "Variable")], 3),
            flash_spitting(),
        ],
        "channels": channels(UV1610_NAMES, UV1610_ORDER, density={"LC": -0.5, "LM": -0.5}),
        "combinations": [
            {"resolution": 1, "paper": 0, "ink": 0,
             "icc": icc("Bex sRGB v4.icc", "Bex Uncoated CMYK.icc", "BexUV1610_PVC_720x1200.icc", 1)},
            {"resolution": 2, "paper": 1, "ink": 0,
             "icc": icc("Bex Wide RGB v2.icc", "Bex Uncoated CMYK.icc", "BexUV1610_Leather_1440x1440.icc", 3),
             "channels": channels(UV1610_NAMES, UV1610_ORDER, density={"K": 0.3, "LC": -0.2, "LM": -0.2},
                                  max_ink={"C": 0.85, "M": 0.85, "Y": 0.85, "K": 0.9})},
            {"resolution": 1, "paper": 0, "ink": 1,
             "channels": channels(UV1610_NAMES, UV1610_ORDER, off=("LC", "LM"))},
        ],
    },
    "BexUV3220_8C": {
        "driverName": "Bex UV3220 8色 CMYK+Lc+Lm+Or+Gr",
        "pdvFile": "BexUV3220_8C.pdv",
        "modeId": 0,
        "enums": [
            resolutions([(600, 900, 4), (1200, 1200, 8), (1200, 2400, 16)]),
            media([("木板", "Wood"), ("瓷砖", "Ceramic tile"), ("皮革", "Leather"), ("纸板", "Cardboard")]),
            inks([("八色", "8 colours"), ("六色", "6 colours")]),
            direction(1),
            head_voltage(),
            pass_count([4, 8, 16]),
            enum(20, "打印速度", "Print speed", [val("标准", "Standard"), val("高速", "Fast")]),
            uv_lamp(2),
            flash_spitting(0),
        ],
        "channels": channels(UV3220_NAMES, UV3220_ORDER, max_ink={"Orange": 0.7, "Green": 0.7}),
        "combinations": [
            {"resolution": 0, "paper": 0, "ink": 0,
             "icc": icc("Bex sRGB v4.icc", "Bex Coated CMYK.icc", "BexUV3220_Wood_600x900.icc", 0)},
            {"resolution": 1, "paper": 1, "ink": 0,
             "icc": icc("Bex sRGB v4.icc", "Bex Coated CMYK.icc", "BexUV3220_Ceramic_1200x1200.icc", 2)},
            {"resolution": 2, "paper": 2, "ink": 1,
             "channels": channels(UV3220_NAMES, UV3220_ORDER, off=("Orange", "Green"))},
        ],
    },
}

PDV = {
    "BexUV2513_CMYKWV": ("Bex UV2513", "Ricoh Gen5", 4, 2500, 1300),
    "BexUV1610_CMYKLcLm": ("Bex UV1610", "Epson i3200", 2, 1600, 1000),
    "BexUV3220_8C": ("Bex UV3220", "Kyocera KJ4A", 8, 3200, 2000),
}


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    samples = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..", "samples")
    folder = os.path.join(samples, "driver")
    os.makedirs(folder, exist_ok=True)
    for name, body in DRIVERS.items():
        document = {"format": "BexPrinterDescription", "formatVersion": 1}
        document.update(body)
        with open(os.path.join(folder, name + ".prs"), "w", encoding="utf-8") as out:
            json.dump(document, out, ensure_ascii=False, indent=2)
            out.write("\n")
        model, head, heads, width, depth = PDV[name]
        with open(os.path.join(folder, body["pdvFile"]), "w", encoding="utf-8", newline="\n") as out:
            out.write(f"[Printer]\nModel={model}\nDriver={body['driverName']}\n\n"
                      f"[Head]\nType={head}\nCount={heads}\n\n"
                      f"[Platen]\nWidthMm={width}\nDepthMm={depth}\n")
        print(name)


if __name__ == "__main__":
    main()
