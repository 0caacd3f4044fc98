"""The pool of asyncio: several calls at once, and what cancelling means."""

import asyncio
import threading

import pytest
from bsp_pon import Olt, StatusError, aio, rows
from bsp_pon._caller import Caller
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


def test_an_olt_is_awaited_as_the_other_one_is_called(olt):
    mac = olt.waiting(PORT)[0].mac

    async def story():
        async with aio.Olt(of=olt) as awaited:
            assert await awaited.bind(PORT, mac, onu_id=7) == 7
            onu = awaited.onu(PORT, 7)
            assert repr(onu) == "Onu(3/7)" and (await onu.info())["mac"] == mac
            await onu.set_vlan(uni=1, pvid=200)
            await awaited.profiles.store_line("gold", vlan=100)
            before = await awaited.config.read()
            await onu.reboot()
            assert (await awaited.wait_online(PORT, 7)).mac == mac
            with pytest.raises(TimeoutError, match="ONU 3/9 is not online after 2 s"):
                await awaited.wait_online(PORT, 9, timeout=2)
            with pytest.raises(StatusError):
                await awaited.onu(PORT, 9).info()
            with pytest.raises(ValueError, match="pvid: 5000 is not"):
                await onu.set_vlan(uni=1, pvid=5000)
            return before, await awaited.table(rows.OnuInfo, "view_onu_info_snmp")

    before, found = asyncio.run(story())
    assert olt.onu(PORT, 7).get_vlan(1)["pvid"] == 200
    assert olt.profiles.get("line", "gold")["vlan"] == 100
    assert "binding 3/7 mac" in str(before.settings()[0]) and found == olt.onus()


def test_an_olt_that_is_given_up_is_not_asked_any_more(olt):
    """One thread is busy. What waits behind it is not made when its task is cancelled, or its time is over."""
    first, second = (onu.mac for onu in olt.waiting(PORT)[:2])
    go_on = threading.Event()

    async def gives_up():
        async with aio.Pool(1) as pool:
            awaited = aio.Olt(of=olt, pool=pool)
            busy = asyncio.ensure_future(pool.run(go_on.wait, 30))
            await asyncio.sleep(0)
            with pytest.raises(TimeoutError):
                async with asyncio.timeout(0):
                    await awaited.bind(PORT, first, onu_id=5)
            tasks = asyncio.gather(awaited.bind(PORT, first, onu_id=5), awaited.bind(PORT, second, onu_id=6))
            await asyncio.sleep(0)
            tasks.cancel()
            with pytest.raises(asyncio.CancelledError):
                await tasks
            go_on.set()
            assert await busy
            assert await awaited.used_ids(PORT) == []  # the thread is free again, and nothing was bound

    asyncio.run(gives_up())


def test_a_method_of_several_calls_makes_all_of_them(olt):
    """A setting is read before it is set. A task that is cancelled between the two has set it all the same."""
    olt.bind(PORT, olt.waiting(PORT)[0].mac, onu_id=9)
    begun, go_on = threading.Event(), threading.Event()

    class Slow(Caller):
        def __call__(self, function, *args, **kwargs):
            answered = super().__call__(function, *args, **kwargs)
            begun.set()
            assert go_on.wait(30)
            return answered

    slow = Olt(olt.call.directory)
    slow.call = Slow(olt.call.directory, None)

    async def cancels():
        async with aio.Olt(of=slow) as awaited:
            setting = asyncio.ensure_future(awaited.onu(PORT, 9).set_vlan(uni=1, pvid=300))
            while not begun.is_set():
                await asyncio.sleep(0)
            setting.cancel()
            with pytest.raises(asyncio.CancelledError):
                await setting
            go_on.set()

    asyncio.run(cancels())
    olt.step("1 s")
    assert olt.onu(PORT, 9).get_vlan(1)["pvid"] == 300


def test_time_passes_for_others_while_an_olt_waits(simulator):
    """Of an OLT that is not simulated no thread of the pool waits between two looks."""
    directory = simulator().directory()

    async def looks():
        async with aio.Pool(1) as pool:
            awaited = aio.Olt(directory, pool=pool)
            return await asyncio.gather(awaited.wait(awaited.alarms, timeout=0.02, interval=0.01), awaited.info(),
                                        return_exceptions=True)

    waited, info = asyncio.run(looks())
    assert isinstance(waited, TimeoutError) and info.pon_ports == 16
