#!/usr/bin/python3
"""A generic BLE client for comparison: connects to a desk by name with bleak and answers each
keypad poll it is sent with the no-key answer, nothing else.

    poll_answerer.py NAME NOTIFY_UUID WRITE_UUID
"""
import asyncio
import sys

from bleak import BleakClient, BleakScanner

POLL_FRAME_TYPE = 0x11  # the frame type, after head and length
NO_KEY_ANSWER = bytes.fromhex("9b060200006ca19d")


async def main(name, notify_uuid, write_uuid):
    device = await BleakScanner.find_device_by_name(name, timeout=30.0)
    if device is None:
        sys.exit(f"{name} was not found")
    async with BleakClient(device) as client:
        write = client.services.get_characteristic(write_uuid)

        def answer(_, frame: bytearray):
            if len(frame) > 2 and frame[2] == POLL_FRAME_TYPE:
                asyncio.ensure_future(client.write_gatt_char(write, NO_KEY_ANSWER, response=False))

        await client.start_notify(notify_uuid, answer)
        print("answering", flush=True)
        await asyncio.Event().wait()


if __name__ == "__main__":
    asyncio.run(main(*sys.argv[1:4]))
