"""Handles of result databases and blocks of memory are released once, however they end."""

import gc

import pytest
from bsp_pon import StatusError, raw, records
from recording import blocks, board, made_handles, released_handles, script


def ask():
    return raw.bsp_pon_onu_auth_infolist_get()


def counts():
    gc.collect()
    return made_handles(), released_handles()


def test_a_database_ends_with_its_block():
    script(0, b"")
    with ask() as database:
        assert database
        assert counts() == (1, 0)
    assert counts() == (1, 1)
    assert not database and database.rows() == []
    database.close()
    del database
    assert counts() == (1, 1)


def test_a_database_ends_with_its_last_user():
    script(0, b"")
    database = ask()
    other = database
    del database
    assert counts() == (1, 0)
    del other
    assert counts() == (1, 1)


def test_a_database_of_a_failed_call_ends_with_the_exception():
    script(4005, b"")
    with pytest.raises(StatusError) as caught:
        ask()
    assert caught.value.outputs
    assert counts() == (1, 0)
    caught.value.outputs.close()
    assert counts() == (1, 1)


def test_a_call_whose_arguments_are_wrong_makes_nothing():
    script(0, b"")
    with pytest.raises(TypeError):
        raw.bsp_pon_get_onu_alarm(records.bsp_onu_msg())
    assert counts() == (0, 0)


def test_no_database_reads_as_an_empty_one():
    script(0, b"")
    board.rb_script_db(board_null())
    database = ask()
    assert not database
    assert (database.text(), database.rows()) == ("", [])


def board_null():
    from recording import ffi

    return ffi.NULL


def test_a_block_of_memory_is_released_once():
    script(0, bytes(8) + (8).to_bytes(4, "little") + bytes(12) + b"/name\0")
    memory, length = raw.bsp_profile_exec_get_cfgwr(1)
    assert length == 8 and len(memory.read(length)) == 8
    given = blocks(board.RB_PMALLOC)
    assert len(given) == 1 and not blocks(board.RB_PFREE)
    with memory:
        pass
    del memory
    gc.collect()
    assert blocks(board.RB_PFREE) == given
