"""The pool of asyncio: several calls at once, and what cancelling means."""

import asyncio
import threading

import pytest
from bsp_pon import Olt, StatusError
from bsp_pon.aio import Pool

PORT = 3


def test_calls_run_side_by_side_in_threads_of_the_pool(olt):
    # Each call waits until both have begun, so they can only end when they run at the same time.
    both = threading.Barrier(2, timeout=30)

    def ask(port):
        both.wait()
        return threading.current_thread().name, olt.onus(port)

    async def two():
        async with Pool(2) as pool:
            return await asyncio.gather(pool.run(ask, 1), pool.run(ask, 2))

    (first, one), (second, two_) = asyncio.run(two())
    assert first != second and first.startswith("bsp_pon") and second.startswith("bsp_pon")
    assert {onu.pon_port for onu in one} == {1} and {onu.pon_port for onu in two_} == {2}


def test_an_error_comes_out_of_await(olt):
    async def fails():
        async with Pool() as pool:
            await pool.run(olt.release, PORT, onu_id=5)

    with pytest.raises(StatusError):
        asyncio.run(fails())


def test_a_call_that_has_not_begun_is_not_made(olt):
    mac = olt.waiting(PORT)[0].mac
    go_on = threading.Event()

    async def cancels():
        async with Pool(1) as pool:
            busy = asyncio.ensure_future(pool.run(go_on.wait, 30))
            waiting = asyncio.ensure_future(pool.run(olt.bind, PORT, mac))
            await asyncio.sleep(0)
            waiting.cancel()
            with pytest.raises(asyncio.CancelledError):
                await waiting
            go_on.set()
            assert await busy

    asyncio.run(cancels())
    assert olt.find(mac).onu_id is None


def test_a_call_that_has_begun_takes_effect(olt):
    mac = olt.waiting(PORT)[0].mac
    begun, go_on = threading.Event(), threading.Event()

    def bind():
        begun.set()
        assert go_on.wait(30)
        olt.bind(PORT, mac, onu_id=9)

    async def cancels():
        async with Pool(1) as pool:
            binding = asyncio.ensure_future(pool.run(bind))
            while not begun.is_set():
                await asyncio.sleep(0)
            binding.cancel()
            with pytest.raises(asyncio.CancelledError):
                await binding
            go_on.set()

    asyncio.run(cancels())
    assert olt.find(mac).onu_id == 9


def test_a_pool_talks_to_several_olts(simulator):
    several = simulator('[[olt]]\nname = "north"\nports = 1\n[[olt]]\nname = "south"\nports = 2\n')
    olts = [Olt(several.directory(name)) for name in ("north", "south")] * 5

    async def ports():
        async with Pool(3) as pool:
            return await asyncio.gather(*(pool.run(olt.ports) for olt in olts))

    assert [len(found) for found in asyncio.run(ports())] == [1, 2] * 5
