require_relative "helper"
require "QuillonProbe"

# Stand-ins for the host's classes, which RegisterHostClasses looks up by path.
module Sketchup
  class Entity; end
  class Drawingelement < Entity; end
  [[Entity, %i[ComponentDefinition Material Vertex]], [Drawingelement, %i[ComponentInstance Group Face Image]],
   [Object, %i[Model Texture]]].each { |base, names| names.each { const_set(_1, Class.new(base)) } }
  Vertex.class_eval { attr_reader :position; def initialize(position) = @position = position }
  Color = Struct.new(:to_a)

  class << self
    attr_accessor :model

    def active_model = (@active_model_calls = active_model_calls + 1; model)
    def active_model_calls = @active_model_calls || 0
  end
end

module Geom
  %i[Vector3d Point3d].each { const_set(_1, Class.new { def initialize(*xyz) = @xyz = xyz; def [](i) = @xyz[i] }) }
  Transformation = Struct.new(:to_a)
  class PolygonMesh; end
end

module Quillon; end

QuillonProbe.register_host_classes(Quillon)

class ValueClassesTest < Minitest::Test
  IDENTITY16 = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1].freeze
  COLOR_ARGUMENTS = "Quillon::Color#initialize - invalid arguments: when passing 3 they must be " \
                    "fixnum / floats".freeze

  # Each refusal of the value classes' constructors and comparisons, with its exact message.
  def assert_refusals(error_class, table)
    table.each { |message, call| assert_equal message, assert_raises(error_class, message) { call.call }.message }
  end

  def test_accepted_constructor_forms
    [[[1.0, 2.5, 3.0], [1, 2.5, 3]], [[4.0, 5.0, 6.0], [Geom::Vector3d.new(4, 5, 6.0)]],
     [[7.0, 8.0, 9.0], [Geom::Point3d.new(7, 8, 9)]],
     [[1.0, 0.0, -1.0], [Sketchup::Vertex.new(Geom::Point3d.new(1, 0, -1))]],
     [[1.0, 2.0, 3.0], [Quillon::Vector.new(1, 2, 3)]]].each do |expected, args|
      assert_equal expected, Quillon::Vector.new(*args).to_a, args.inspect
    end
    copy = Quillon::Vector.new(1, 2, 3)
    assert_same copy, copy.set(0, 0, 1)
    transform = Quillon::Transform.new([1, 0, 0, 0, 0, 2, 0, 0, 0, 0, 3, 0, 10, 20, 30, 1])
    GC.start # the values survive a collection
    assert_equal [0.0, 0.0, 1.0], copy.to_a
    assert_equal "{ 1, 0, 0 }\n{ 0, 2, 0 }\n{ 0, 0, 3 }\n{ 10, 20, 30 }\n", transform.to_s
    assert_equal ["(1, 0, 0.2)", "(0.5, 1, 0)", "(0, 1, 2.5)"],
                 [Quillon::Color.new(Sketchup::Color.new([255, 0, 51, 255])),
                  Quillon::Color.new(Quillon::Color.new(0.5, 1, 0)), Quillon::Color.new(0, 1, 2.5)].map(&:to_s)
    numbers = [1, 0, 0, 0, 0, 2, 0, 0, 0, 0, 3, 0, 10, 20, 30, 1]
    vectors = [[1, 0, 0], [0, 2, 0], [0, 0, 3], [10, 20, 30]]
    host = vectors.first(3).map { |v| Geom::Vector3d.new(*v) } << Geom::Point3d.new(10, 20, 30)
    [[numbers], [Geom::Transformation.new(numbers)], [Quillon::Transform.new(numbers)],
     vectors.map { |v| Quillon::Vector.new(*v) }, host].each do |args|
      assert_equal [1.0, 0.0, 0.0, 0.0, 2.0, 0.0, 0.0, 0.0, 3.0, 10.0, 20.0, 30.0],
                   Quillon::Transform.new(*args).to_a, args.inspect
    end
  end

  # Every number in a different place, so that a column, row or offset read from the wrong
  # slot shows.
  def test_transform_keeps_each_of_the_sixteen_numbers_in_its_place
    numbers = (1..16).to_a
    columns = [1.0, 2.0, 3.0, 5.0, 6.0, 7.0, 9.0, 10.0, 11.0, 13.0, 14.0, 15.0]
    vectors = [[1, 2, 3], [5, 6, 7], [9, 10, 11], [13, 14, 15]]
    host = vectors.first(3).map { Geom::Vector3d.new(*_1) } << Geom::Point3d.new(*vectors.last)
    [[numbers], [Geom::Transformation.new(numbers)], [Quillon::Transform.new(numbers)],
     vectors.map { Quillon::Vector.new(*_1) }, host].each do |args|
      assert_equal columns, Quillon::Transform.new(*args).to_a, args.inspect
    end
    assert_equal "{ 1, 2, 3 }\n{ 5, 6, 7 }\n{ 9, 10, 11 }\n{ 13, 14, 15 }\n", Quillon::Transform.new(numbers).to_s
    big = Quillon::Transform.new([2**64] + numbers.drop(1))
    assert_equal [2.0**64, 2.0, 3.0], big.to_a.first(3), "a bignum is a number too"
  end

  def test_product_of_general_transforms
    # a's matrix has the columns (1, 2, 0), (0, 1, 3), (2, 0, 1) and the offset (1, 1, 1); b's
    # the columns (1, 0, 1), (0, 2, 0), (1, 1, 0) and the offset (2, 0, 1). By hand:
    # a.m * b's columns = (3, 2, 1), (0, 2, 6), (1, 3, 3); a.m * (2, 0, 1) + (1, 1, 1) = (5, 5, 2).
    a = Quillon::Transform.new([1, 2, 0, 0, 0, 1, 3, 0, 2, 0, 1, 0, 1, 1, 1, 1])
    b = Quillon::Transform.new([1, 0, 1, 0, 0, 2, 0, 0, 1, 1, 0, 0, 2, 0, 1, 1])
    ab = [3.0, 2.0, 1.0, 0.0, 2.0, 6.0, 1.0, 3.0, 3.0, 5.0, 5.0, 2.0]
    assert_equal ab, (a * b).to_a
    assert_equal [1.0, 2.0, 0.0, 0.0, 1.0, 3.0, 2.0, 0.0, 1.0, 1.0, 1.0, 1.0], a.to_a, "* leaves a alone"
    assert_same a, a.send(:"*=", b)
    assert_equal ab, a.to_a
  end

  def test_text_forms_and_the_set_alias
    vector = Quillon::Vector.new(1, -2.5, 3)
    assert_equal ["(1, -2.5, 3)", "v(1, -2.5, 3)"], [vector.to_s, "v" + vector], "to_str makes it text"
    color = Quillon::Color.new(0, 0, 0)
    assert_same color, color.set(0.25, 1, 2)
    assert_equal "c(0.25, 1, 2)", "c" + color
    transform = Quillon::Transform.new(IDENTITY16)
    assert_same transform, transform.set((1..16).to_a)
    assert_equal "t{ 1, 2, 3 }\n", ("t" + transform).lines.first
    assert_equal [2.0**64, -(2.0**70), 3.0], Quillon::Vector.new(2**64, -(2**70), 3).to_a
  end

  def test_constructor_refusals
    count = "invalid parameter count - Quillon::Vector#set"
    argument = "invalid Quillon::Vector argument in Vector#set"
    prefix = "Quillon::Transform#initialize - "
    assert_refusals ArgumentError, [
      [count, -> { Quillon::Vector.new }], [count, -> { Quillon::Vector.new(1, 2) }],
      [argument, -> { Quillon::Vector.new("x") }], [argument, -> { Quillon::Vector.new(1, :b, 2) }],
      ["invalid Geom::Vector3d#[] result - Quillon::Vector#set",
       -> { Quillon::Vector.new(Geom::Vector3d.new(1, nil, 3)) }],
      ["invalid Geom::Point3d#[] result - Quillon::Vector#set", -> { Quillon::Vector.new(Geom::Point3d.new(1, 2)) }],
      *[nil, Geom::Vector3d.new(1, 2, 3)].map do |position|
        ["invalid Geom::Vertex#position result - Quillon::Vector#set",
         -> { Quillon::Vector.new(Sketchup::Vertex.new(position)) }]
      end,
      [argument, -> { Quillon::Vector.new(Quillon::Color.new(1, 2, 3)) }],
      ["Quillon::Color#initialize - invalid to_a in 1 argc color init",
       -> { Quillon::Color.new(Sketchup::Color.new(nil)) }],
      ["Quillon::Color#initialize - invalid single argument: must be Sketchup::Color or " \
       "Quillon::Color", -> { Quillon::Color.new([1, 2, 3]) }],
      *[-> { Quillon::Color.new(1, "2", 3) }, -> { Quillon::Color.new },
        -> { Quillon::Color.new(2**64, 0, 0) }].map { |call| [COLOR_ARGUMENTS, call] },
      ["#{prefix}invalid ruby array length - should be 16", -> { Quillon::Transform.new([0] * 15) }],
      ["#{prefix}Geom::Transformation#to_a failed", -> { Quillon::Transform.new(Geom::Transformation.new([1, 2])) }],
      ["#{prefix}1 arg version should be a Geom::Transformation / Quillon::Transform / an array " \
       "with 16 doubles", -> { Quillon::Transform.new("matrix") }],
      ["#{prefix}4 argument version should be 3 Sketchup::Vector3d / 1 Sketchup::Point3d or 4 " \
       "Quillon::Vector", -> { Quillon::Transform.new(1, 2, 3, 4) }],
      ["#{prefix}invalid argument count", -> { Quillon::Transform.new(IDENTITY16, IDENTITY16) }],
      ["#{prefix}invalid argument count", -> { Quillon::Transform.new }]
    ]
  end

  def test_transform_product
    # a: scale 2, moved by (1, 0, 0); b: a quarter turn about z, moved by (0, 1, 0).
    a = Quillon::Transform.new([2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 1, 0, 0, 1])
    b = Quillon::Transform.new([0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 1])
    ab = [0.0, 2.0, 0.0, -2.0, 0.0, 0.0, 0.0, 0.0, 2.0, 1.0, 2.0, 0.0]
    assert_equal [ab, [0.0, 2.0, 0.0, -2.0, 0.0, 0.0, 0.0, 0.0, 2.0, 0.0, 2.0, 0.0]], [(a * b).to_a, (b * a).to_a]
    assert_nil a * 2
    assert_same a, a.send(:"*=", b)
    assert_equal ab, a.to_a
    assert_nil a.send(:"*=", "b")
  end

  def test_material_setters
    m = Quillon::Material.new
    # A fresh record: black, no texture or name, opaque, type 0, no alpha use.
    assert_equal ["(0, 0, 0)", "", "", 1.0, 0, false],
                 [m.color.to_s, m.texture, m.name, m.alpha, m.type, m.use_alpha]
    # A setter answers the material, or nil when the value is of the wrong kind.
    [[:type=, 2], [:alpha=, 0.5], [:color=, Quillon::Color.new(0.25, 0.5, 1)]].each do |setter, v|
      assert_same m, m.send(setter, v), setter
    end
    [[:alpha=, 1], [:use_alpha=, nil], [:color=, [1, 2, 3]], [:name=, :sym]].each do |setter, v|
      assert_nil m.send(setter, v), "#{setter} #{v.inspect}"
    end
    m.name, m.texture, m.use_alpha = "Oak", "C:/maps/oak.png", true
    assert_equal [2, "Oak", "C:/maps/oak.png", 0.5, true], [m.type, m.name, m.texture, m.alpha, m.use_alpha]
    assert_equal "(0.25, 0.5, 1)", m.color.to_s
    assert_equal "Name: Oak\tColor: 0.25, 0.5, 1\nAlpha: 0.5\tUse Alpha: 1\nTexture: C:/maps/oak.png",
                 m.to_s
    assert_same m, m.send(:initialize)
    fields = -> { [m.color.to_s, m.texture, m.name, m.alpha, m.type, m.use_alpha] }
    assert_equal ["(0, 0, 0)", "", "", 1.0, 0, false], fields.call, "initialize sets every field afresh"
  end

  def test_material_comparison
    a, b = Quillon::Material.new, Quillon::Material.new
    a.name, a.texture = "Oak", "Maps/OAK.png"
    b.name, b.texture = "oak", "maps/oak.PNG"
    assert_equal [true, false], [a.is_equal?(b), a.not_equal?(b)], "names and textures ignore case"
    b.alpha = 0.75
    assert_equal [false, true], [a.is_equal?(b), a.not_equal?(b)]
    b.alpha = 1.0
    b.color = Quillon::Color.new(0, 0, 0.001)
    refute a.is_equal?(b)
    m, type = a, "argument 1 expected to be of type Quillon::Material\n"
    assert_refusals RuntimeError, [
      ["[Quillon::Material#==] - invalid argument 1\n", -> { m.is_equal?(nil) }],
      ["[Quillon::Material#==] - #{type}", -> { m.is_equal?(Quillon::Color.new(0, 0, 0)) }],
      ["[Quillon::Material#!=] - invalid argument 1\n", -> { m.not_equal?(nil) }],
      ["[Quillon::Material#!=] - #{type}", -> { m.not_equal?("m") }]
    ]
  end

  # A model that would record any change the upgrade makes.
  WatchedModel = Struct.new(:operations) do
    def start_operation(*) = (operations << :start; true)
    def commit_operation = (operations << :commit; true)
    def path = ""
  end

  def test_registered_pass_still_stops_at_the_prompt
    Sketchup.model = WatchedModel.new([])
    calls_before = Sketchup.active_model_calls
    QuillonProbe.offer_upgrade
    assert_equal 1, Sketchup.active_model_calls - calls_before, "the pass asked for the model"
    assert_empty Sketchup.model.operations, "the prompt's answer is always no"
  ensure
    Sketchup.model = nil
  end
end
